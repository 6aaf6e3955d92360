#include "driverapi.h"
#include "guardedtest.h"
#include "modbusframe.h"

#include <QLibrary>
#include <QMap>
#include <QtEndian>

namespace {

/** The invented device at the end of a line that delivers `piece` bytes at a time. */
struct Line : PortDescriptor
{
    QByteArray sent;
    QByteArray replies;
    int piece = 7;
};

QByteArray withCrc(QByteArray frame)
{
    frame.append(2, '\0');
    setModbusCRC(reinterpret_cast<unsigned char *>(frame.data()), frame.size());
    return frame;
}

QByteArray reply(quint16 mode, quint16 alarms, const QList<float> &floats)
{
    QByteArray bytes = QByteArray::fromHex("050424");
    const auto append = [&bytes](auto number) {
        char raw[sizeof number];
        qToBigEndian(number, raw);
        bytes.append(raw, sizeof raw);
    };
    append(mode);
    append(alarms);
    for (const float value : floats)
        append(value);
    return withCrc(bytes);
}

} // namespace

/** The driver of the documents, on a line that only seems to be one. */
class tst_ExampleDriver : public GuardedTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QLibrary driver(EXAMPLE_DRIVER);
        m_query = reinterpret_cast<QueryFunction>(driver.resolve("Query"));
        m_control = reinterpret_cast<ControlFunction>(driver.resolve("Control"));
        QVERIFY2(m_query && m_control, qPrintable(driver.errorString()));
    }

    void init()
    {
        m_line = Line();
        m_line.device = &m_line;
        m_line.read = [](void *handle, char *buffer, int length) {
            auto *line = static_cast<Line *>(handle);
            const QByteArray piece = line->replies.left(qMin(length, line->piece));
            line->replies.remove(0, piece.size());
            std::copy(piece.begin(), piece.end(), buffer);
            return piece.size();
        };
        m_line.write = [](void *handle, char *buffer, int length) {
            static_cast<Line *>(handle)->sent.append(buffer, length);
            return length;
        };
    }

    void values()
    {
        m_line.replies = reply(2, 0b0011, { 0, float(qQNaN()), 229.5f, 50, 33, 228, -12.5f, 80 });
        QVERIFY(query(5));
        QCOMPARE(m_line.sent, withCrc(QByteArray::fromHex("050401000012")));
        QCOMPARE(m_values.value(4164), 229.5f);
        QCOMPARE(m_values.value(4106), -12.5f);
        QVERIFY(!m_values.contains(4139));
        QCOMPARE(m_values.value(4241), 5.0f);
        QCOMPARE(m_values.value(2059), 1.0f);
        QCOMPARE(m_values.value(2082), 1.0f);
        QCOMPARE(m_values.count() - 7 - 7 - 3 - 1, 96);
    }

    void badReplies()
    {
        const QByteArray good = reply(1, 0, { 1, 2, 3, 4, 5, 6, 7, 8 });
        QByteArray wrongCrc = good;
        wrongCrc[20] = char(wrongCrc[20] ^ 1);
        const QByteArray bad[] = {
            {}, good.left(20), wrongCrc, reply(3, 0, { 1, 2, 3, 4, 5, 6, 7, 8 })
        };
        for (const QByteArray &bytes : bad) {
            m_line.replies = bytes;
            QVERIFY(!query(5));
            QVERIFY(m_values.isEmpty());
            QVERIFY(m_line.replies.isEmpty());
        }
        m_line.sent.clear();
        QVERIFY(!query(0) && !query(261) && m_line.sent.isEmpty());
    }

    void commands()
    {
        const QByteArray shutDown = withCrc(QByteArray::fromHex("050602000003"));
        m_line.replies = shutDown;
        QCOMPARE(control("4,"), 1);
        QCOMPARE(m_line.sent, shutDown);
        QCOMPARE(control("4,"), 0); // without an answer
        m_line.sent.clear();
        for (const char *unknown : { "", "0", "10,", "3005,18" })
            QCOMPARE(control(unknown), 0);
        QVERIFY(m_line.sent.isEmpty());
    }

private:
    bool query(int address)
    {
        m_values.clear();
        const auto store = [](int id, float value, void *context) {
            static_cast<QMap<int, float> *>(context)->insert(id, value);
        };
        return m_query(&m_line, address, store, &m_values) != 0;
    }

    int control(QByteArray text) { return m_control(&m_line, 5, text.data(), nullptr); }

    QueryFunction m_query = nullptr;
    ControlFunction m_control = nullptr;
    Line m_line {};
    QMap<int, float> m_values;
};

QTEST_GUILESS_MAIN(tst_ExampleDriver)
#include "tst_exampledriver.moc"
