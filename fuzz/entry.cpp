// The program of one target; which one is set by TARGET.
#include "targets.h"

#include <QApplication>

#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    static int count = 1;
    static char name[] = "fuzz";
    static char *arguments[] = { name, nullptr };
    static auto *const application = new QApplication(count, arguments);
    Q_UNUSED(application)
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    TARGET(QByteArray(reinterpret_cast<const char *>(data), int(size)));
    return 0;
}
