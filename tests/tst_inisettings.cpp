// INI files, which must mean what they mean to QSettings, by which hosts write them.

#include "guardedtest.h"
#include "serial/inisettings.h"

#include <random>

namespace {

/** What QSettings takes the file for, lists joined; without keys that it cannot find itself. */
QMap<QString, QString> byQSettings(const QByteArray &file)
{
    static int count = 0; // QSettings does not notice every change of a file
    const QString iniName = QString::number(++count);
    QMap<QString, QString> result;
    if (!writeFile(iniName, file))
        qFatal("no file");
    const QSettings settings(iniName, QSettings::IniFormat);
    const QStringList keys = settings.allKeys();
    QFile::remove(iniName);
    for (const QString &key : keys) {
        const QVariant value = settings.value(key);
        if (!key.contains(QLatin1String("//")) && !key.startsWith('/') && !key.endsWith('/'))
            result[key] = value.type() == QVariant::ByteArray ? value.toString()
                                                              : value.toStringList().join(',');
    }
    return result;
}

} // namespace

class tst_IniSettings : public GuardedTest
{
    Q_OBJECT

private slots:
    void readsAsQSettingsDoes_data()
    {
        const Columns<QByteArray> row("file");
        row("quoted, unquoted, trimmed",
            "[g]\na=\"9600,n,8,1\"\nb=9600, n ,8,1\nc =  x  \nd=\" x \"y");
        row("groups: general, escaped, none, broken",
            "o=0\n[General]\na=1\n[%General]\na=2\n[g%20h\\i]\na=3\n[x\na=4");
        row("comments", "; a=1\na=12#3#0#0 ; b=2\n;\nb=\"x;y\"\n  ;c=3\nc=4");
        row("escaped in keys and values",
            "a%2Fb\\c=\\x41\\n\\\"\\\\\\q\n%U00e9%zz%4=\\101\nk=\\\nl");
        row("ends of lines", "a=1\r\nb=2\rc=3\n\n\r\nd=\"4\n5\"\ne=6\\\r\n7\nf=\\\r\n\"8;9\"");
        row("types", "a=@@x\nb=@String(x)\nc=@ByteArray(5)\nd=@x");
        row("bytes of UTF-8 and a mark", "\xef\xbb\xbf;\na=\xc3\xa9");
        row("bytes without a mark", "a=\xc3\xa9\n\xe9=1");
        row("twice", "[g]\na=1\n[h]\na=2\n[g]\na=3\nb=");
        row("nothing", "");
    }

    void readsAsQSettingsDoes()
    {
        QFETCH(QByteArray, file);
        const IniSettings settings(file);
        const QMap<QString, QString> expected = byQSettings(file);
        for (auto it = expected.begin(); it != expected.end(); ++it)
            QCOMPARE(it.key() + settings.value(it.key()).value_or(" none"), it.key() + it.value());
    }

    void readsWhatNobodyWroteAsQSettingsDoes()
    {
        std::mt19937 dice(20);
        const QByteArray letters("aB=[]\";,\\%/ \tx4U@()=");
        for (int run = 0; run < 5000; ++run) {
            QByteArray file("[g]\nk=");
            for (uint length = dice() % 24; length > 0; --length)
                file += letters.at(int(dice() % uint(letters.size())));
            const IniSettings settings(file);
            const QMap<QString, QString> expected = byQSettings(file);
            for (auto it = expected.begin(); it != expected.end(); ++it)
                QVERIFY2(settings.value(it.key()) == it.value(), file.toPercentEncoding());
        }
    }
};

QTEST_GUILESS_MAIN(tst_IniSettings)
#include "tst_inisettings.moc"
