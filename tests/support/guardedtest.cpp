#include "guardedtest.h"

#include <QFile>

void GuardedTest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(m_directory->path()));
    m_guard.emplace();
    QLocale::setDefault(QLocale(QLocale::German)); // no number may follow it
}

void GuardedTest::cleanup()
{
    const QStringList unexpected = m_guard->unexpected();
    m_guard.reset();
    QVERIFY2(unexpected.isEmpty(), qPrintable(unexpected.join(QLatin1Char(10))));
}

bool writeFile(const QString &name, const QByteArray &bytes)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray fileContents(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
