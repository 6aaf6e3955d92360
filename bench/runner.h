#pragma once

#include <QString>
#include <QVector>

#include <functional>

/** What a contender stands for in its row. */
enum class Role {
    Ours,  ///< the project's own code
    Limit, ///< the hand-written limit
    Peer,  ///< the library or program that the goal names
    Other, ///< further ones, for comparison
    Naive, ///< a straightforward version that ours must beat
};

/** One of those that do the same work in turn. */
struct Contender
{
    QString name;
    Role role;
    int operations; ///< how many operations a round is
    std::function<void()> round;
    std::function<void()> prepare = nullptr; ///< before each round, not measured
};

/** What a row's times are. */
enum class Clock {
    Wall,      ///< what passes; for exchanges, where the device's answer is waited for
    Processor, ///< what this process and its finished children were given; steady on a busy machine
};

/** One line of the table. A goal of 0 is none. */
struct Row
{
    QString name;
    QVector<Contender> contenders;
    double toLimit = 0;         ///< ours / limit, at most
    double toPeer = 0;          ///< ours / best peer, at most
    double fasterThanNaive = 0; ///< naive / ours, at least
    double belowNs = 0;         ///< ours, in ns an operation, at most
    int rounds = 61;
    Clock clock = Clock::Processor;
};

/** A figure that is not a time: measured once, compared with a bound. */
struct Figure
{
    QString name;
    double value;
    QString unit;
    double bound; ///< at most; 0 is none
};

/**
 * Runs rows with their contenders in turn (A B C A B C ...), keeps medians, prints table and JSON.
 *
 * In turn, because on a shared machine only neighbours in time can be compared.
 */
class Runner
{
public:
    void run(const Row &row);
    void note(const Figure &figure);

    /** Prints the table; writes the JSON unless `jsonFile` is empty. Returns false if a goal is missed. */
    bool report(const QString &jsonFile) const;

private:
    struct Result
    {
        Row row;
        QVector<double> medians; // ns an operation, as the row's contenders
    };
    QVector<Result> m_results;
    QVector<Figure> m_figures;
};

/** Processor time of this process and its finished children so far, in ns. */
double processorTime();

/** Puts the calling thread, and those it starts, on one processor: free placement is bimodal. */
void pinToOneProcessor();

/** Takes the pinning back. */
void unpin();
