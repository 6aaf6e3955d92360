// A refresh of each tab with 420 values, changed and unchanged; a repaint of the diagram; the cost
// of a view that was shown and then hidden.

#include "clients.h"
#include "rows.h"

#include "plugin/collectview.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QPainter>
#include <QTableWidget>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace {

using Data = QMap<int, QVariant>;

constexpr double goalHidden = 0.1; // ms of processor time a second

Data report(int turn)
{
    Data data;
    for (int i = 0; i < 420; ++i) {
        const int id = i < 96 ? 2000 + i : i < 196 ? 3000 + i - 96 : 4000 + i - 196;
        data.insert(id, id < 3000 ? float((i + turn) % 3 == 0) : float(i % 50 + turn));
    }
    return data;
}

/** What a tab is made of, without meaning: texts set in a table or in labels, and painted. */
class BareWidgets : public QWidget
{
public:
    BareWidgets(int tables, int rows, int labels)
    {
        auto *layout = new QVBoxLayout(this);
        for (int i = 0; i < tables; ++i) {
            auto *table = new QTableWidget(rows, 3);
            for (int row = 0; row < rows; ++row) {
                for (int column = 0; column < 3; ++column)
                    table->setItem(row, column, new QTableWidgetItem(QStringLiteral("12.3 V")));
            }
            layout->addWidget(table);
            m_tables.append(table);
        }
        for (int i = 0; i < labels; ++i) {
            auto *label = new QLabel(QStringLiteral("12.3 V"));
            layout->addWidget(label);
            m_labels.append(label);
        }
    }

    void write(const QString &text)
    {
        for (QTableWidget *table : qAsConst(m_tables)) {
            for (int row = 0; row < table->rowCount(); ++row)
                table->item(row, 1)->setText(text);
        }
        for (QLabel *label : qAsConst(m_labels))
            label->setText(text);
    }

private:
    QVector<QTableWidget *> m_tables;
    QVector<QLabel *> m_labels;
};

/** Six filled squares, six dashed lines, forty texts: what the diagram paints, without meaning. */
class BareDiagram : public QWidget
{
protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        painter.fillRect(rect(), QColor(240, 240, 245));
        for (int i = 0; i < 6; ++i)
            painter.fillRect(20 + 120 * i, 200, 75, 75, QColor(41, 71, 198));
        painter.setPen(QPen(QColor(157, 172, 255), 5, Qt::DashLine, Qt::RoundCap, Qt::RoundJoin));
        for (int i = 0; i < 6; ++i)
            painter.drawLine(20, 20 * i + 20, 600, 20 * i + 20);
        painter.setPen(Qt::black);
        for (int i = 0; i < 40; ++i)
            painter.drawText(20 + 200 * (i % 4), 300 + 16 * (i / 4),
                             QStringLiteral("Voltage: 220.0/221.0/219.0 V"));
    }
};

struct Tab
{
    const char *name;
    int tables, rows, labels; // of the bare widgets that stand against it
};

constexpr Tab tabs[] = {
    { "Overview", 0, 0, 0 },
    { "Alarm", 1, 32, 0 },
    { "RT-data", 0, 0, 39 },
    { "Control", 4, 20, 0 },
};

std::function<void()> flush(CollectView *view, Data first, Data second, int times)
{
    return [=] {
        for (int i = 0; i < times; ++i) {
            view->flushData(i % 2 ? first : second);
            QCoreApplication::processEvents();
        }
    };
}

std::function<void()> write(BareWidgets *widgets, QString first, QString second, int times)
{
    return [=] {
        for (int i = 0; i < times; ++i) {
            widgets->write(i % 2 ? first : second);
            QCoreApplication::processEvents();
        }
    };
}

void benchTab(Runner &runner, CollectView *view, const Tab &tab, bool changed)
{
    constexpr int times = 10;
    const Data first = report(0);
    const Data second = changed ? report(1) : first;
    BareWidgets bare(tab.tables, tab.rows, tab.labels);
    bare.resize(view->size());
    bare.show();
    Row row {
        QStringLiteral("Refresh of \"%1\", %2").arg(tab.name, changed ? "changed" : "unchanged"),
        { { QStringLiteral("bare widgets"), Role::Limit, times,
            write(&bare, QStringLiteral("12.3 V"),
                  changed ? QStringLiteral("45.6 V") : QStringLiteral("12.3 V"), times) },
          { QStringLiteral("view"), Role::Ours, times, flush(view, first, second, times) } }
    };
    row.toLimit = 2;
    row.rounds = 21;
    runner.run(row);
}

void benchDiagram(Runner &runner, QWidget *diagram)
{
    BareDiagram bare;
    bare.resize(diagram->size());
    bare.show();
    QCoreApplication::processEvents();
    const auto repaint = [](QWidget *widget) {
        return [widget] {
            for (int i = 0; i < 5; ++i)
                widget->repaint();
        };
    };
    Row row { QStringLiteral("Repaint of the diagram"),
              { { QStringLiteral("bare widget"), Role::Limit, 5, repaint(&bare) },
                { QStringLiteral("Energyline"), Role::Ours, 5, repaint(diagram) } } };
    row.toLimit = 2;
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

} // namespace

void benchView(Runner &runner)
{
    tavoClient client;
    CollectView *view = client.getView();
    view->resize(1000, 640);
    view->setUserInfo(QStringLiteral("operator"), 1);
    view->show();
    auto *pages = view->findChild<QTabWidget *>();
    for (int i = 1; i < int(std::size(tabs)); ++i) {
        pages->setCurrentIndex(i);
        QCoreApplication::processEvents();
        benchTab(runner, view, tabs[i], true);
        benchTab(runner, view, tabs[i], false);
    }
    pages->setCurrentIndex(0);
    view->flushData(report(1));
    QCoreApplication::processEvents();
    benchDiagram(runner, findDiagram(view));
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
