#pragma once

#include "guardedtest.h"
#include "tavoview.h"

#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTabWidget>

/** Base of the tests of the whole view: each has one of its own, and sees what it posts. */
class ViewTest : public GuardedTest
{
    Q_OBJECT

protected:
    using Event = QMap<QString, QVariant>;

    template <typename Widget> Widget *child(const QString &name = {}) const
    {
        return m_view->findChild<Widget *>(name);
    }
    QTabWidget *tabs() const { return child<QTabWidget>(); }

    QString cell(const QString &table, const QString &row, int column) const
    {
        auto *widget = child<QTableWidget>(table);
        const auto items = widget->findItems(row, Qt::MatchExactly);
        return items.isEmpty() ? "no such row" : widget->item(items.first()->row(), column)->text();
    }

    // The value label beside a name, in whichever panel.
    QString panelValue(const QString &name) const
    {
        const auto names = m_view->findChildren<QLabel *>("PanalBodyKeyName");
        const auto values = m_view->findChildren<QLabel *>("PanalBodyKeyValue");
        for (int i = 0; i < names.size(); ++i) {
            if (names.at(i)->text() == name)
                return values.at(i)->text();
        }
        return "no such panel row";
    }

    void doubleClick(const QString &table, const QString &row)
    {
        auto *widget = child<QTableWidget>(table);
        emit widget->cellDoubleClicked(widget->findItems(row, Qt::MatchExactly).first()->row(), 1);
    }

    void click(const QString &button) { child<QPushButton>(button)->click(); }

    // What was posted: "type argument".
    QStringList sent() const
    {
        QStringList result;
        for (const QList<QVariant> &arguments : *m_posted)
            result.append(arguments.at(0).toString() + ' '
                          + arguments.at(1).value<Event>().value("controlValue").toString());
        return result;
    }

    std::unique_ptr<tavoView> m_view;
    std::unique_ptr<QSignalSpy> m_posted;

protected slots:
    void init()
    {
        GuardedTest::init();
        m_view = std::make_unique<tavoView>();
        m_view->refreshLayout();
        m_view->setName("UPS 7");
        m_view->setUserInfo("admin", 1);
        m_posted = std::make_unique<QSignalSpy>(m_view.get(), &CollectView::postDEvent);
    }

    void cleanup()
    {
        m_posted.reset();
        m_view.reset();
        GuardedTest::cleanup();
    }
};
