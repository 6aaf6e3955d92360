// A refresh of each tab with 420 values, changed and unchanged; a repaint of the diagram; the cost
// of a view that was shown and then hidden, and of one that is seen.

#include "barepages.h"
#include "clients.h"
#include "rows.h"

#include "tavoview.h"

#include <QApplication>
#include <QTabWidget>
#include <QTimer>

namespace {

using Data = QMap<int, QVariant>;

constexpr double goalHidden = 0.1; // ms of processor time a second
constexpr double goalShown = 20;   // likewise

Data report(int turn)
{
    Data data;
    for (int i = 0; i < 420; ++i) {
        const int id = i < 96 ? 2000 + i : i < 196 ? 3000 + i - 96 : 4000 + i - 196;
        data.insert(id, id < 3000 ? float((i + turn) % 3 == 0) : float(i % 50 + turn));
    }
    return data;
}

constexpr int times = 10; // a round

std::function<void()> refresh(std::function<void(const Data &)> write, Data first, Data second)
{
    return [=] {
        for (int i = 0; i < times; ++i) {
            write(i % 2 ? first : second);
            QCoreApplication::processEvents();
        }
    };
}

void benchTab(Runner &runner, CollectView *view, const QString &name, BarePage &bare)
{
    bare.resize(view->size());
    bare.show();
    const auto writeBare = [&bare](const Data &data) { bare.write(data); };
    const auto writeView = [view](const Data &data) { view->flushData(data); };
    for (const bool changed : { true, false }) {
        const Data first = report(0);
        const Data second = report(changed ? 1 : 0);
        Row row { QStringLiteral("Refresh of \"%1\", %2")
                      .arg(name, QLatin1String(changed ? "changed" : "unchanged")),
                  { { QStringLiteral("bare widgets"), Role::Limit, times,
                      refresh(writeBare, first, second) },
                    { QStringLiteral("view"), Role::Ours, times,
                      refresh(writeView, first, second) } } };
        row.toLimit = 2;
        runner.run(row);
    }
}

void benchRepaint(Runner &runner, QWidget *diagram, QWidget *bare)
{
    const auto repaint = [](QWidget *widget) {
        return [widget] {
            for (int i = 0; i < times; ++i)
                widget->repaint();
        };
    };
    Row row { QStringLiteral("Repaint of the diagram"),
              { { QStringLiteral("bare widget"), Role::Limit, times, repaint(bare) },
                { QStringLiteral("Energyline"), Role::Ours, times, repaint(diagram) } } };
    row.toLimit = 1.4;
    runner.run(row);
}

QWidget *findDiagram(QWidget *view)
{
    for (QWidget *child : view->findChildren<QWidget *>()) {
        if (child->inherits("Energyline"))
            return child;
    }
    qFatal("bench: the view has no diagram");
}

double loopCost(int seconds)
{
    const double begin = processorTime();
    QEventLoop loop;
    QTimer::singleShot(seconds * 1000, &loop, &QEventLoop::quit);
    loop.exec();
    return (processorTime() - begin) / 1e6 / seconds;
}

Data deviceTexts()
{
    Data texts;
    for (const ParameterInformation *record : tavo_6_20k_View().getDeviceData()) {
        for (int i = 0; i < record->length; ++i)
            texts.insert(record->dataId + i, float('A' + i));
    }
    return texts;
}

} // namespace

void benchView(Runner &runner)
{
    tavoClient client;
    CollectView *view = client.getView();
    view->resize(1000, 640);
    view->setUserInfo(QStringLiteral("operator"), 1);
    view->show();
    const tavo_6_20k_View family;
    auto *pages = view->findChild<QTabWidget *>();
    const auto open = [pages](int tab) {
        pages->setCurrentIndex(tab);
        QCoreApplication::processEvents();
    };
    const auto table = [view](const char *name) {
        return view->findChild<QTableWidget *>(QLatin1String(name));
    };

    open(tavoView::AlarmTab);
    benchTab(runner, view, QStringLiteral("Alarm"),
             *bareAlarmPage(*table("RecordTable"), family.getAlarmList()));
    open(tavoView::RealDataTab);
    benchTab(runner, view, QStringLiteral("RT-data"),
             *bareValuePage(family.getDeviceData() + family.getOutputData() + family.getInputData()
                            + family.getBypassData() + family.getBatteryData()
                            + family.getRecInvData()));
    open(tavoView::ControlTab);
    benchTab(runner, view, QStringLiteral("Control"),
             *bareSettingsPage({ table("basicTable"), table("batteryTable"), table("adjustTable"),
                                 table("devinforTable") },
                               { family.getBasicConfig(), family.getBatteryConfig(),
                                 family.getAdjustConfig(), family.getDevInfoConfig() }));
    open(tavoView::OverviewTab);
    QWidget *diagram = findDiagram(view);
    const std::unique_ptr<BarePage> bare = bareDiagram();
    benchTab(runner, view, QStringLiteral("Overview"), *bare);
    bare->resize(diagram->size());
    benchRepaint(runner, diagram, bare.get());
}

void benchHiddenView(Runner &runner)
{
    constexpr int seconds = 10;
    const double alone = loopCost(seconds);
    tavoClient client;
    CollectView *view = client.getView();
    view->show();
    view->flushData(report(0));
    QCoreApplication::processEvents();
    view->hide();
    runner.note({ QStringLiteral("A view shown and then hidden, above an event loop alone"),
                  loopCost(seconds) - alone, QStringLiteral("ms a second"), goalHidden });
}

// Measured values change with each report, ten times a second; settings and events stay.
void benchShownView(Runner &runner)
{
    constexpr int seconds = 10;
    tavoClient client;
    CollectView *view = client.getView();
    view->resize(1000, 640);
    view->show();
    QTimer reports;
    const Data texts = deviceTexts();
    QObject::connect(&reports, &QTimer::timeout, [&, turn = 0]() mutable {
        Data data = report(0);
        ++turn;
        for (auto value = data.lowerBound(4000); value != data.end(); ++value)
            *value = float((value.key() + turn) % 50 + turn % 10);
        for (auto code = texts.begin(); code != texts.end(); ++code)
            data.insert(code.key(), *code);
        view->flushData(data);
    });
    reports.start(100);
    auto *const tabs = view->findChild<QTabWidget *>();
    for (int i = 0; i < tabs->count(); ++i) {
        tabs->setCurrentIndex(i);
        runner.note({ QStringLiteral("A view that shows \"%1\", ten reports a second")
                          .arg(tabs->tabText(i)),
                      loopCost(seconds), QStringLiteral("ms a second"), goalShown });
    }
}
