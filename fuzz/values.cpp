// Values of any kind that a driver delivers, up to the host's log and the view.
#include "targets.h"
#include "tavoclient.h"

#include "collectview.h"

#include <cstring>

namespace {

struct Value
{
    quint16 id;
    float value;
};

} // namespace

void fuzzValues(const QByteArray &input)
{
    static auto *const client = new tavoClient;
    static QMap<int, QVariant> reported;
    static const auto connection = QObject::connect(
        client, &CollectThread::postDEvent, [](int, const QMap<QString, QVariant> &map) {
            if (map.contains(QStringLiteral("data")))
                reported = map.value(QStringLiteral("data")).value<QMap<int, QVariant>>();
        });
    Q_UNUSED(connection)
    constexpr int size = sizeof(quint16) + sizeof(float);
    int last = 0;
    for (int at = 0; at + size <= input.size(); at += size) {
        Value point;
        std::memcpy(&point.id, input.constData() + at, sizeof point.id);
        std::memcpy(&point.value, input.constData() + at + sizeof point.id, sizeof point.value);
        last = point.id % 5000; // most of them known
        client->parseData(last, point.value);
    }
    client->reportData();
    require(last == 0 || reported.contains(last));
    require(client->changeLogData(reported).size() == client->getDataLogDesc().size());
    CollectView *const view = client->getView();
    view->flushData(reported);
    view->refreshData();
}
