#include "tavoclient.h"

tavoClient::tavoClient(CollectThread *parent)
    : CollectThread(parent)
{
}
