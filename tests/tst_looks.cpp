// What the view looks like, to the pixel: looks.txt holds a sum of each picture. A change of the
// looks that is meant is taken over with the target update-looks.

#include "clientnews.h"
#include "diagram/energyline.h"
#include "dialogs/dialog.h"
#include "dialogs/msgbox.h"
#include "trends/trendpanel.h"
#include "viewtest.h"

#include <QCryptographicHash>
#include <QLineEdit>
#include <QPainter>
#include <QToolButton>

#include <dlfcn.h>
#include <sys/time.h>

static timespec now = {}; // of all clocks that are drawn

#define FOR_QT extern "C" __attribute__((visibility("default")))

FOR_QT int gettimeofday(timeval *time, void *) noexcept
{
    *time = { now.tv_sec, 0 };
    return 0;
}

FOR_QT int clock_gettime(clockid_t clock, timespec *time) noexcept
{
    static const auto real =
        reinterpret_cast<decltype(&clock_gettime)>(dlsym(RTLD_NEXT, "clock_gettime"));
    if (clock != CLOCK_BOOTTIME)
        return real(clock, time);
    *time = now;
    return 0;
}

namespace {

QString sumOf(const QImage &picture)
{
    const QImage image = picture.convertToFormat(QImage::Format_RGB32);
    const auto *bits = reinterpret_cast<const char *>(image.constBits());
    const QByteArray bytes = QByteArray::fromRawData(bits, int(image.sizeInBytes()));
    return QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex().left(12);
}

// How text and curves come out here: other fonts, another Qt, or a processor for which Qt has other
// code, draw everything otherwise.
QString environment()
{
    __builtin_cpu_init();
    const int processor = (__builtin_cpu_supports("ssse3") ? 1 : 0)
        + (__builtin_cpu_supports("sse4.1") ? 2 : 0) + (__builtin_cpu_supports("avx2") ? 4 : 0)
        + (__builtin_cpu_supports("avx512bw") ? 8 : 0);
    QImage image(400, 120, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawEllipse(QRectF(300.3, 10.7, 33.3, 44.4));
    for (int i = 0; i < 4; ++i) {
        painter.setFont(QFont("Microsoft YaHei", 9 + i, i % 2 ? QFont::Bold : -1, i > 1));
        painter.drawText(5, 25 * (i + 1), QString::fromUtf8("Hg5% – ●■▲ 电池"));
    }
    painter.end();
    return sumOf(image) + ' ' + qVersion() + ' ' + QSysInfo::buildAbi() + ' '
        + QString::number(processor);
}

// A value for everything; all paths carry energy.
DataReport report(int mode)
{
    DataReport values;
    for (int id = 3000; id < 4250; ++id) {
        const bool isText = (id > 3070 && id < 3095) || (id > 3999 && id < 4097);
        values.insert(id, float(isText ? 'A' + id % 26 : 1 + id % 9));
    }
    for (int id = 4216; id <= 4222; ++id)
        values[id] = 1.0f;
    for (const auto &[id, value] : { std::pair(4241, float(mode)),
                                     { 4161, 2.0f },
                                     { 4176, 55.5f },
                                     { 4117, 80.0f },
                                     { 4103, 18.0f } })
        values[id] = value;
    return values;
}

} // namespace

class tst_Looks : public ViewTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        qputenv("TZ", "UTC");
        QApplication::setCursorFlashTime(0);
        for (const QString &line : QString::fromUtf8(fileContents(LOOKS_FILE)).split(QChar(10)))
            m_known.insert(line.section(": ", 0, 0), line.section(": ", 1));
        if (!m_isUpdate && m_known.value("environment") != environment())
            QSKIP("The pictures were taken with other fonts, another Qt or processor.");
        m_seen["environment"] = environment();
    }

    void init()
    {
        now.tv_sec = 1'700'000'000;
        ViewTest::init();
        m_view->resize(1000, 640);
        m_view->show();
    }

    void cleanup()
    {
        ViewTest::cleanup();
        QVERIFY2(m_isUpdate || m_changed.isEmpty(),
                 qPrintable(m_folder + ": look at " + std::exchange(m_changed, {}).join(", ")));
    }

    void cleanupTestCase()
    {
        if (!m_isUpdate)
            return;
        QByteArray lines;
        for (auto seen = m_seen.begin(); seen != m_seen.end(); ++seen)
            lines += (seen.key() + ": " + seen.value() + '\n').toUtf8();
        QVERIFY(writeFile(LOOKS_FILE, lines));
    }

    void pages_data()
    {
        const Columns<int, int, int> row("mode", "link", "level"); // 4 on line, 5 on battery
        row("waiting", -1, 0, 1);
        row("on-line", 4, 0, 1);
        row("on-battery", 5, 0, 1);
        row("lost", 4, 1, 1);
        row("guest", 4, 0, 0);
    }

    void pages()
    {
        QFETCH(int, mode);
        QFETCH(int, link);
        QFETCH(int, level);
        ClientNews news;
        m_view->follow(news);
        m_view->setUserInfo("somebody", level);
        for (int step = 0; step < 20 && mode >= 0; ++step, now.tv_sec += 10) {
            DataReport values = report(step > 10 ? mode : 4);
            values[4176] = float(40 + step);
            if (step > 5)
                values[2059] = values[2071] = values[2082] = 1.0f;
            m_view->flushData(values);
        }
        news.setLink({ link, QDateTime::currentDateTime() });
        m_view->control(1016, {});
        emit news.historyExported({ "history.csv", 312, {} });
        for (const int width : { 1000, 1900 }) {
            m_view->resize(width, width * 16 / 25);
            for (int tab = 0; tab < tabs()->count(); ++tab) {
                tabs()->setCurrentIndex(tab);
                look(tabs()->tabText(tab), *m_view);
            }
        }
    }

    // Where the keys are: on a block, and in the trends.
    void focus()
    {
        for (const float load : { 40.0f, 60.0f }) {
            m_view->flushData({ { 4176, load }, { 4241, 4.0f } });
            now.tv_sec += 10;
        }
        m_view->resize(1900, 1000);
        m_view->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
        auto *diagram = child<Energyline>();
        diagram->findChild<QAbstractButton *>()->setFocus(Qt::TabFocusReason);
        look("block", *diagram);
        auto *trends = diagram->parentWidget()->findChild<TrendPanel *>();
        trends->setFocus(Qt::TabFocusReason);
        QTest::keyClick(trends, Qt::Key_Left);
        look("step", *trends);
    }

    void tables()
    {
        m_view->flushData(report(4));
        tabs()->setCurrentIndex(tavoView::ControlTab);
        auto *inner = child<QWidget>("configStack")->findChild<QTabWidget *>();
        for (int tab = 0; tab < inner->count(); ++tab) {
            inner->setCurrentIndex(tab);
            auto *table = qobject_cast<QTableWidget *>(inner->currentWidget());
            table->selectRow(1);
            look(table->objectName(), *table);
        }
    }

    void dialog()
    {
        m_view->flushData(report(4));
        doubleClick("basicTable", "Cell float voltage:");
        auto *dialog = child<Dialog>();
        look("value", *dialog);
        for (const char *typed : { "2.349", "9" }) {
            dialog->findChild<QLineEdit *>()->setText(typed);
            look(typed, *dialog);
        }
        dialog->switchPage(2);
        look("busy", *dialog);
        dialog->reject();
        doubleClick("adjustTable", "Bypass voltage lower limit:");
        look("option", *dialog);
        m_view->flushUpsInfo("state", 1);
        look("obstacle", *dialog);
    }

    void boxes()
    {
        const BoxAbout about { "UPS 7", "The load loses its power.", Tone::Alarm,
                               "Three\nlines\n." };
        for (const int kind : { MsgBox::Notice, MsgBox::Question }) {
            for (const QString &text : { QString("Startup?"), QString(300, 'w') }) {
                MsgBox box(kind, text);
                look(QString("box %1 %2").arg(kind).arg(text.size()), box);
                box.tell(about);
                look(QString("told %1 %2").arg(kind).arg(text.size()), box);
                box.findChild<QToolButton *>()->click();
                look(QString("details %1 %2").arg(kind).arg(text.size()), box);
            }
        }
    }

private:
    void look(const QString &picture, QWidget &widget)
    {
        for (auto *timer : widget.findChildren<QTimer *>())
            timer->stop(); // of what moves
        QCoreApplication::sendPostedEvents();
        const QImage image = widget.grab().toImage();
        const QString test = QString(QTest::currentTestFunction()) + ' ' + QTest::currentDataTag();
        QString name = test.trimmed() + ' ' + picture + ' ' + QString::number(image.width());
        m_seen[name] = sumOf(image);
        if (m_known.value(name) == m_seen[name])
            return;
        m_changed.append(name.replace(' ', '-') + ".png");
        image.save(m_folder + '/' + m_changed.last());
    }

    const bool m_isUpdate = qEnvironmentVariableIsSet("UPDATE_LOOKS");
    const QString m_folder = QDir::currentPath();
    QMap<QString, QString> m_known;
    QMap<QString, QString> m_seen;
    QStringList m_changed;
};

QTEST_MAIN(tst_Looks)
#include "tst_looks.moc"
