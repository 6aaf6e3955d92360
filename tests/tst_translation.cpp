#include "view/dialog.h"
#include "view/energystate.h"
#include "view/msgbox.h"
#include "view/tavoview.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTabWidget>
#include <QTranslator>
#include <QtTest>

namespace {

// Everything a widget shows.
QStringList textsOf(const QWidget *widget)
{
    QStringList texts { widget->toolTip(), widget->windowTitle() };
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        texts.append(label->text());
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        texts.append(button->text());
    if (const auto *tabs = qobject_cast<const QTabWidget *>(widget)) {
        for (int i = 0; i < tabs->count(); ++i)
            texts.append(tabs->tabText(i));
    }
    if (const auto *table = qobject_cast<const QTableWidget *>(widget)) {
        for (int column = 0; column < table->columnCount(); ++column) {
            texts.append(table->horizontalHeaderItem(column)->text());
            for (int row = 0; row < table->rowCount(); ++row)
                texts.append(table->item(row, column)->text());
        }
    }
    return texts;
}

bool isChinese(const QString &text)
{
    return std::any_of(text.begin(), text.end(),
                       [](QChar c) { return c.script() == QChar::Script_Han; });
}

// Units, numbers and abbreviations stay; words of three letters and more are to be Chinese.
QStringList untranslated(const QStringList &texts)
{
    static const QRegularExpression word("[A-Za-z]{3,}");
    QStringList result;
    for (const QString &text : texts) {
        if (text.contains(word) && !isChinese(text) && text != "kVA")
            result.append(text);
    }
    return result;
}

} // namespace

class tst_Translation : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void wholeView();
    void descriptions();
    void diagram();

private:
    QTranslator m_translator;
};

void tst_Translation::initTestCase()
{
    QVERIFY(m_translator.load(CATALOGUE));
    QVERIFY(QCoreApplication::installTranslator(&m_translator));
}

void tst_Translation::wholeView()
{
    tavoView view;
    view.refreshLayout();
    const MsgBox box(MsgBox::Question, QString());
    DataReport report;
    for (int id = 2000; id < 2096; ++id)
        report.insert(id, 1.0f);
    for (int tab = 0; tab < 5; ++tab) {
        view.flushData(report);
        view.findChild<QTabWidget *>()->setCurrentIndex(tab);
    }
    QStringList texts;
    for (const QWidget *widget : view.findChildren<QWidget *>() + box.findChildren<QWidget *>())
        texts += textsOf(widget);
    QVERIFY(texts.size() > 500);
    QCOMPARE(untranslated(texts), QStringList());
    QVERIFY(texts.contains(QString::fromUtf8("单体浮充电压:")));
}

void tst_Translation::descriptions()
{
    const tavo_6_20k_View data;
    QStringList texts = data.getAlarmList();
    for (const auto &list :
         { data.getBasicConfig(), data.getBatteryConfig(), data.getAdjustConfig(),
           data.getDevInfoConfig(), data.getDeviceData(), data.getBatteryData(),
           data.getRecInvData(), data.getOutputData(), data.getBypassData() }) {
        for (const ParameterInformation *record : list)
            texts += QStringList { record->name, record->unit } + record->combo.keys();
    }
    QCOMPARE(untranslated(texts), QStringList());
    // Two options that read alike would leave the map with one.
    QCOMPARE(data.getBasicConfig().first()->combo.size(), 5);
}

void tst_Translation::diagram()
{
    for (int value = 0; value < 12; ++value) {
        DataReport report;
        for (const int id : { 4101, 4103, 4161, 4190, 4240, 4241, 4242, 4243 })
            report.insert(id, float(value));
        QStringList texts;
        for (const auto &panel : energyState(report).panels) {
            for (const EnergyLine &line : panel)
                texts += QStringList { line.label, line.value };
        }
        QCOMPARE(untranslated(texts), QStringList());
    }
}

QTEST_MAIN(tst_Translation)
#include "tst_translation.moc"
