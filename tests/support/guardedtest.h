#pragma once

#include "columns.h"
#include "warningguard.h"

#include <QtTest>

#include <memory>
#include <optional>

/**
 * Base of the test classes: every test has an empty working directory of its own and fails on a Qt
 * warning that it does not expect.
 *
 * A class with init() or cleanup() of its own calls these.
 */
class GuardedTest : public QObject
{
    Q_OBJECT

protected slots:
    void init();
    void cleanup();

protected:
    QString path(const QString &file) const { return m_directory->filePath(file); }

    std::optional<WarningGuard> m_guard; // emplace() ends the old one first

private:
    std::unique_ptr<QTemporaryDir> m_directory;
};

/** Runs from its construction on. */
struct Stopwatch : QElapsedTimer
{
    Stopwatch() { start(); }
};

/** Replaces what a file holds. @return false when it cannot be written */
bool writeFile(const QString &name, const QByteArray &bytes);

/** What a file holds; nothing when it cannot be read. */
QByteArray fileContents(const QString &name);
