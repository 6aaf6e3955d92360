#include "fakeclient.h"

#include "plugin/collectview.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>

namespace {

constexpr int EventCount = 96;

/** Shows what the host gives it on its button. */
class FakeView : public CollectView
{
public:
    FakeView()
        : m_button(new QPushButton)
    {
        m_button->setObjectName("battery_test");
        connect(m_button, &QPushButton::clicked, this, [this] { control(1003, QString()); });
        auto *empty = new QWidget;
        empty->setObjectName("SecondTable");
        auto *tabs = new QTabWidget;
        tabs->addTab(m_button, "1");
        tabs->addTab(empty, "2");
        auto *column = new QVBoxLayout(this);
        column->addWidget(tabs);
    }

    void flushData(QMap<int, QVariant> d) override
    {
        CollectView::flushData(d);
        m_button->setText(QStringLiteral("%1 %2 %3 %4")
                              .arg(d.first().toString())
                              .arg(userLevel)
                              .arg(language)
                              .arg(deviceInformation.value("key").toString()));
    }

private:
    QPushButton *m_button;
};

} // namespace

tavoClient::~tavoClient()
{
    requestInterruption();
    wait();
    delete m_view;
}

QMap<QString, QVariant> tavoClient::common() const
{
    return { { "name", deviceName }, { "timeStr", "2026-01-02 03:04:05" } };
}

int tavoClient::control(int id, QString value)
{
    QMap<QString, QVariant> map = common();
    const QStringList parts = value.split(QRegExp("[,=]"));
    int type = value.toInt();
    if (id == 2) {
        type = 2006;
        const int flag = parts.value(0).toInt();
        map["alarmState"] = parts.value(1).toInt();
        map["alarmId"] = parts.value(1).toInt() == 1 ? flag : EventCount + flag;
    } else if (id == 3) {
        type = 2007;
        const QMap<int, QVariant> data { { parts.value(0).toInt(), parts.value(1).toFloat() } };
        flushUpsInfo("key", "information");
        map["data"] = QVariant::fromValue(data);
    } else if (id != 1) {
        type = 1042;
        map["controlId"] = id + 1;
        map["desc"] = QStringLiteral("%1 %2").arg(id).arg(value);
    }
    emit postDEvent(type, map);
    return 1;
}

QStringList tavoClient::getDataLogDesc()
{
    return { "Voltage", "Three, \"phases\"" };
}

QStringList tavoClient::changeLogData(QMap<int, QVariant> data)
{
    return { data.value(4105).toString(), "1,2,3" };
}

QStringList tavoClient::getEventLogDesc()
{
    QStringList texts;
    for (int i = 0; i < 2 * EventCount; ++i)
        texts << QStringLiteral("%1 %2").arg(i % EventCount).arg(i < EventCount ? "here" : "gone");
    return texts;
}

CollectView *tavoClient::getView()
{
    if (m_view)
        return m_view;
    m_view = new FakeView;
    connect(m_view, &CollectView::postDEvent, this, &CollectThread::postDEvent);
    m_view->setName(deviceName);
    return m_view;
}

void tavoClient::loadConfig()
{
    // What the host wrote, so that a test sees it in the events.
    QSettings ini(QCoreApplication::applicationDirPath() + "/KOVA/TesselView/db/dev.ini",
                  QSettings::IniFormat);
    QStringList texts;
    for (const char *key : { "portName", "addr", "retries", "interval", "commType", "ipAddr",
                             "port", "eventChooseList/192", "eventChooseList/193" })
        texts << ini.value(deviceName + '/' + key).toString();
    deviceText = texts.join('|');
}

CollectThread *tavoClient::create(void *)
{
    return new tavoClient;
}

void tavoClient::poll()
{
    if (m_polled)
        return;
    m_polled = true;
    QMap<QString, QVariant> map = common();
    map["state"] = 0;
    map["desc"] = deviceText;
    emit postDEvent(1040, map);
    emit postDEvent(2001, map);
}

void tavoClient::run()
{
    poll();
    while (!isInterruptionRequested())
        msleep(5);
}
