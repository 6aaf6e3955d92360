// How the view looks, by rules that hold for all of it: nothing covers anything else, one font,
// what belongs together is in line.

#include "diagram/energyline.h"
#include "dialogs/dialog.h"
#include "dialogs/msgbox.h"
#include "modalanswer.h"
#include "pages/valuepanel.h"
#include "trends/trendpanel.h"
#include "viewtest.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QStackedWidget>
#include <QWindow>

namespace {

bool isSeen(const QWidget &widget)
{
    return widget.isVisible()
        && (qobject_cast<const QLabel *>(&widget) || qobject_cast<const QAbstractButton *>(&widget)
            || qobject_cast<const QTableWidget *>(&widget)
            || qobject_cast<const QLineEdit *>(&widget)
            || qobject_cast<const QComboBox *>(&widget));
}

// What stands on another thing or sticks out of `top`.
QStringList misplaced(const QWidget &top)
{
    QStringList found;
    QList<QPair<const QWidget *, QRect>> taken;
    for (const auto *widget : top.findChildren<QWidget *>()) {
        const QString name = widget->metaObject()->className() + widget->objectName();
        if (!isSeen(*widget) || widget->objectName().startsWith("qt_"))
            continue;
        const QRect rect(widget->mapTo(&top, QPoint()), widget->size());
        if (!top.rect().contains(rect))
            found.append(name + " sticks out");
        for (const auto &[other, place] : taken) {
            if (place.intersects(rect) && !other->isAncestorOf(widget))
                found.append(name + " covers " + other->objectName());
        }
        taken.append({ widget, rect });
    }
    return found;
}

// By how much red outweighs blue in the columns from `left` on, at most.
int reddest(const QImage &image, int left, int count)
{
    int most = 0;
    for (int i = 0; i < count * image.height(); ++i) {
        const QRgb pixel = image.pixel(left + i % count, i / count);
        most = std::max(most, qRed(pixel) - qBlue(pixel));
    }
    return most;
}

QStringList inOtherFonts(const QWidget &top)
{
    QStringList found;
    for (const auto *widget : top.findChildren<QWidget *>()) {
        const QFont font = widget->font();
        if (isSeen(*widget) && (font.family() != "Microsoft YaHei" || font.pointSize() < 10))
            found.append(widget->metaObject()->className() + widget->objectName());
    }
    return found;
}

} // namespace

class tst_ViewLook : public ViewTest
{
    Q_OBJECT

private slots:
    void init()
    {
        // A host's style sheet, which takes the inheriting of fonts away.
        qApp->setStyleSheet("QWidget { color: black; }");
        ViewTest::init();
        m_view->flushData({ { 3013, 7.0f } });
        m_view->resize(1000, 640);
        m_view->show();
    }

    void cleanup()
    {
        ViewTest::cleanup();
        qApp->setStyleSheet({});
    }

    void pages()
    {
        for (int tab = tavoView::OverviewTab; tab <= tavoView::MaintenanceTab; ++tab) {
            tabs()->setCurrentIndex(tab);
            QCOMPARE(misplaced(*m_view) + inOtherFonts(*m_view), QStringList());
        }
    }

    void dialog()
    {
        ParameterInformation record;
        record.name = "Number:";
        record.max = 10;
        Dialog &dialog = *m_view->findChild<Dialog *>();
        dialog.initial(&record);
        dialog.show();
        for (const int page : { 0, 1, 2 }) { // value, option, busy
            dialog.switchPage(page);
            QCoreApplication::processEvents();
            QCOMPARE(misplaced(dialog) + inOtherFonts(dialog), QStringList());
        }
    }

    void messageBox()
    {
        const ModalAnswer answer([this](QDialog &box) {
            QCOMPARE(misplaced(box) + inOtherFonts(box), QStringList());
            QVERIFY((box.geometry().center() - m_view->geometry().center()).manhattanLength() < 4);
            QCOMPARE(box.windowHandle()->transientParent(), m_view->windowHandle());
            box.accept();
        });
        MsgBox::ask(m_view.get(), MsgBox::Question, "Startup?");
        QVERIFY(answer.hasAnswered());
    }

    // A device's own text gives way; a wide page is not filled with empty cards.
    void cardsKeepTheirWidth()
    {
        tabs()->setCurrentIndex(tavoView::RealDataTab);
        const auto cards = m_view->findChildren<ValuePanel *>();
        auto *card = cards.first();
        const int before = card->width();
        DataReport report;
        for (int i = 0; i < 16; ++i)
            report.insert(4080 + i, float('W'));
        m_view->flushData(report);
        QCoreApplication::processEvents();
        QCOMPARE(card->valueLabels().at(4)->text(), QString(16, 'W'));
        QCOMPARE(card->width(), before);
        m_view->resize(1900, 1000);
        QTRY_COMPARE(card->width(), 420 * card->logicalDpiX() / 96);
    }

    // As with twice the points an inch; the width of the column of ranges is bound.
    void largeFontsCutNothing()
    {
        QFont large = m_view->font();
        large.setPointSize(20);
        auto *record = child<QTableWidget>("RecordTable");
        record->setFont(large);
        QVERIFY(record->columnWidth(0)
                > QFontMetrics(large).horizontalAdvance("since before 0000-00-00 00:00:00"));
        tabs()->setCurrentIndex(tavoView::ControlTab);
        auto *settings = child<QTableWidget>("batteryTable");
        child<QStackedWidget>("configStack")->findChild<QTabWidget *>()->setCurrentIndex(1);
        settings->setFont(large);
        QTableWidgetItem *range = settings->item(8, 2);
        QCOMPARE(range->text(), QString("720-30000"));
        settings->scrollToItem(range);
        const QImage image = settings->viewport()->grab(settings->visualItemRect(range)).toImage();
        QVERIFY(reddest(image, image.width() / 2 - 40, 80) > 150); // it is written
        QVERIFY(reddest(image, 0, 3) < 40 && reddest(image, image.width() - 3, 3) < 40);
    }

    // The least size is the page's: a host that sizes the diagram gets that size.
    void overviewHasRoomForTrends()
    {
        auto *diagram = m_view->findChild<Energyline *>();
        const auto *trends = diagram->parentWidget()->findChild<TrendPanel *>();
        QVERIFY(!trends->isVisible() && diagram->width() >= 900);
        m_view->resize(1900, 1000);
        QTRY_VERIFY(trends->isVisible() && diagram->width() >= 1200);
        QCOMPARE(diagram->geometry().intersected(trends->geometry()), QRect());
        diagram->resize(400, 300);
        QCoreApplication::processEvents();
        QCOMPARE(diagram->size(), QSize(400, 300));
    }

    void tablesAreToLookAt()
    {
        for (const auto *table : m_view->findChildren<QTableWidget *>()) {
            const QByteArray name = table->objectName().toUtf8();
            QVERIFY2(table->editTriggers() == QAbstractItemView::NoEditTriggers, name);
            QVERIFY2(table->focusPolicy() == Qt::NoFocus, name);
            QVERIFY2(table->selectionMode() == QAbstractItemView::SingleSelection, name);
            QVERIFY2(table->selectionBehavior() == QAbstractItemView::SelectRows, name);
            const bool isRecord = name == "RecordTable";
            QCOMPARE(table->columnWidth(isRecord ? 0 : 2), isRecord ? 280 : 150);
            QVERIFY(isRecord || qAbs(table->columnWidth(0) - table->columnWidth(1)) <= 1);
        }
    }
};

QTEST_MAIN(tst_ViewLook)
#include "tst_viewlook.moc"
