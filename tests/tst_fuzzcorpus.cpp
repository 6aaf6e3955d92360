#include "targets.h"

#include <QDirIterator>
#include <QtTest>

/** The inputs that were once worth keeping, in the functions that the fuzz programs call. */
class tst_FuzzCorpus : public QObject
{
    Q_OBJECT

private slots:
    void inputs_data();
    void inputs();
};

void tst_FuzzCorpus::inputs_data()
{
    QTest::addColumn<int>("target");
    QTest::addColumn<QString>("path");
    int index = 0;
    for (const FuzzTarget &target : fuzzTargets) {
        QDirIterator corpus(QStringLiteral(CORPUS "/") + target.name, QDir::Files);
        QVERIFY2(corpus.hasNext(), target.name);
        while (corpus.hasNext()) {
            const QString path = corpus.next();
            QTest::addRow("%s/%s", target.name, qUtf8Printable(corpus.fileName())) << index << path;
        }
        ++index;
    }
}

// An input that fails ends the process.
void tst_FuzzCorpus::inputs()
{
    QFETCH(int, target);
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    fuzzTargets[target].run(file.readAll());
}

QTEST_MAIN(tst_FuzzCorpus)
#include "tst_fuzzcorpus.moc"
