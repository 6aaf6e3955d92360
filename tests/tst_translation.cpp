#include "diagram/energystate.h"
#include "dialogs/msgbox.h"
#include "tavoview.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTableWidget>
#include <QTabWidget>
#include <QTranslator>
#include <QtTest>

namespace {

// Everything a widget shows.
QStringList textsOf(const QWidget *widget)
{
    QStringList texts;
    if (const auto *label = qobject_cast<const QLabel *>(widget))
        texts.append(label->text());
    if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
        texts.append(button->text());
    const auto *tabs = qobject_cast<const QTabWidget *>(widget);
    for (int i = 0; tabs && i < tabs->count(); ++i)
        texts.append(tabs->tabText(i));
    const auto *table = qobject_cast<const QTableWidget *>(widget);
    for (int column = 0; table && column < table->columnCount(); ++column) {
        texts.append(table->horizontalHeaderItem(column)->text());
        for (int row = 0; row < table->rowCount(); ++row)
            texts.append(table->item(row, column)->text());
    }
    return texts;
}

// Units, numbers and abbreviations stay; a text with a word is to have Chinese characters.
QStringList untranslated(const QStringList &texts)
{
    static const QRegularExpression word("[A-Za-z]{3,}");
    static const QRegularExpression chinese("\\p{Han}");
    QStringList result;
    for (const QString &text : texts) {
        if (text.contains(word) && !text.contains(chinese) && !text.endsWith("kVA"))
            result.append(text);
    }
    return result;
}

} // namespace

class tst_Translation : public QObject
{
    Q_OBJECT

private slots:
    void wholeView()
    {
        QVERIFY(m_translator.load(CATALOGUE) && QCoreApplication::installTranslator(&m_translator));
        tavoView view;
        view.refreshLayout();
        const MsgBox box(MsgBox::Question, QString());
        QStringList texts;
        // Every event is present, and every state and option has its turn.
        for (int value = 1; value < 12; ++value) {
            DataReport report;
            for (int id = 2000; id < 2096; ++id)
                report.insert(id, 1.0f);
            for (int id = 3000; id < 4250; ++id)
                report.insert(id, float(value));
            view.flushData(report);
            for (int tab = 0; tab < 5; ++tab)
                view.findChild<QTabWidget *>()->setCurrentIndex(4 - tab);
            for (const QWidget *widget :
                 view.findChildren<QWidget *>() + box.findChildren<QWidget *>())
                texts += textsOf(widget);
            for (const auto &panel : energyState(deviceFamily(), report).panels) {
                for (const EnergyLine &line : panel)
                    texts += QStringList { line.label, line.value };
            }
        }
        QVERIFY(texts.contains(QString::fromUtf8("单体浮充电压：")));
        QVERIFY(texts.contains(QString::fromUtf8("电池电压低")));
        QCOMPARE(untranslated(texts), QStringList());
    }

private:
    QTranslator m_translator;
};

QTEST_MAIN(tst_Translation)
#include "tst_translation.moc"
