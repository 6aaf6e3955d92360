#include "comm/modbusframe.h"

#include <QTest>

#include <array>
#include <climits>

namespace {

unsigned char *bytesOf(QByteArray &array)
{
    return reinterpret_cast<unsigned char *>(array.data());
}

// A buffer of which `used` bytes are the frame's and the rest must stay as it is.
constexpr int room = 64;
constexpr char untouched = '\x5a';

} // namespace

class tst_ModbusFrame : public QObject
{
    Q_OBJECT

private slots:
    void publishedVectors_data();
    void publishedVectors();
    void everyFlippedBitIsFound();
    void requests();
    void replyLength_data();
    void replyLength();
    void writeMultiple_data();
    void writeMultiple();
    void refusals();
    void texts();
};

void tst_ModbusFrame::publishedVectors_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("read ten registers") << QByteArray::fromHex("01030000000ac5cd");
    QTest::newRow("two bytes") << QByteArray::fromHex("02074112"); // of the serial line guide
    QTest::newRow("read coils") << QByteArray::fromHex("110100130025 0e84");
}

void tst_ModbusFrame::publishedVectors()
{
    QFETCH(QByteArray, frame);
    QByteArray built = frame;
    built.replace(frame.size() - 2, 2, "??");
    QCOMPARE(checkModbufCRC(bytesOf(built), built.size()), -1);
    QCOMPARE(setModbusCRC(bytesOf(built), built.size()), 0);
    QCOMPARE(built, frame);
    QCOMPARE(checkModbufCRC(bytesOf(built), built.size()), 0);
}

void tst_ModbusFrame::everyFlippedBitIsFound()
{
    for (int length = 4; length <= 256; length += 63) {
        QByteArray frame(length, untouched);
        QCOMPARE(setModbusCRC(bytesOf(frame), length), 0);
        for (int bit = 0; bit < 8 * length; ++bit) {
            QByteArray damaged = frame;
            damaged[bit / 8] = char(damaged[bit / 8] ^ (1 << bit % 8));
            const QByteArray before = damaged;
            QCOMPARE(checkModbufCRC(bytesOf(damaged), length), -1);
            QCOMPARE(damaged, before);
        }
    }
}

void tst_ModbusFrame::requests()
{
    QByteArray frame(room, untouched);
    QCOMPARE(mod_Set_SetBuf(bytesOf(frame), 0x101, 0x10010, -2), 0);
    QCOMPARE(frame.left(9).toHex(), QByteArray("01060010fffe487f5a"));
    QCOMPARE(checkModbufCRC(bytesOf(frame), 8), 0);
    QCOMPARE(buildCmd(bytesOf(frame), 17, 1, 0x13, 0x25), 0);
    QCOMPARE(frame.left(9), QByteArray::fromHex("110100130025 0e84 5a"));
}

void tst_ModbusFrame::replyLength_data()
{
    QTest::addColumn<int>("functionCode");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("length");
    QTest::newRow("registers") << 3 << 125 << 255;
    QTest::newRow("input registers") << 4 << 1 << 7;
    QTest::newRow("inputs, rounded down") << 2 << 12 << 6;
    QTest::newRow("write one") << 6 << 999 << 8;
    QTest::newRow("coils") << 1 << 8 << 0;
    QTest::newRow("write many") << 16 << 8 << 0;
    QTest::newRow("largest count") << 3 << INT_MAX << -1;
    QTest::newRow("negative count") << 2 << -12 << 4;
}

void tst_ModbusFrame::replyLength()
{
    QFETCH(int, functionCode);
    QFETCH(int, count);
    QByteArray frame(room, untouched);
    QTEST(buildCmd(bytesOf(frame), 1, functionCode, 0, count), "length");
    QCOMPARE(checkModbufCRC(bytesOf(frame), 8), 0);
    QCOMPARE(frame.mid(8), QByteArray(room - 8, untouched));
}

void tst_ModbusFrame::writeMultiple_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("length");
    QTest::addColumn<QByteArray>("start");
    const QByteArray two = QByteArray::fromHex("0110001000020412 34abcd");
    QTest::newRow("two values") << 2 << 13 << two;
    QTest::newRow("none") << 0 << 9 << QByteArray::fromHex("01100010000000");
    QTest::newRow("minus one") << -1 << 7 << QByteArray::fromHex("01100010ff");
    QTest::newRow("minus two") << -2 << 5 << QByteArray::fromHex("011000");
    QTest::newRow("minus three") << -3 << 3 << QByteArray::fromHex("011000");
    QTest::newRow("minus many") << -70000 << -139991 << QByteArray();
    QTest::newRow("smallest") << INT_MIN << -1 << QByteArray();
    QTest::newRow("largest") << INT_MAX << -1 << QByteArray();
}

void tst_ModbusFrame::writeMultiple()
{
    QFETCH(int, count);
    QFETCH(int, length);
    QFETCH(QByteArray, start);
    const std::array<unsigned short, 2> values = { 0x1234, 0xABCD };
    QByteArray frame(room, untouched);
    QCOMPARE(buildCmd16(bytesOf(frame), 1, 0x10, count, values.data()), length);
    QCOMPARE(frame.left(start.size()), start);
    if (length >= 4)
        QCOMPARE(checkModbufCRC(bytesOf(frame), length), 0);
    QCOMPARE(frame.mid(qMax(0, length)), QByteArray(room - qMax(0, length), untouched));
}

void tst_ModbusFrame::refusals()
{
    unsigned char buffer[8] = {};
    QCOMPARE(setModbusCRC(nullptr, 8) + checkModbufCRC(nullptr, 8), -2);
    QCOMPARE(setModbusCRC(buffer, 3) + checkModbufCRC(buffer, INT_MIN), -2);
    QCOMPARE(mod_Set_SetBuf(nullptr, 1, 2, 3) + buildCmd(nullptr, 1, 3, 0, 1), -2);
    QCOMPARE(buildCmd16(nullptr, 1, 0, 0, nullptr) + buildCmd16(buffer, 1, 0, 1, nullptr), -2);
}

void tst_ModbusFrame::texts()
{
    const unsigned char bytes[] = { 0xFE, 0xDC, 0xBA, 0x98 };
    QCOMPARE(int(UINT8_2_to_UINT16(bytes)), 0xFEDC);
    QCOMPARE(UINT8_4_to_UINT32(bytes), 0xFEDCBA98U);
    char text[] = "  \t a";
    char blanks[] = "   ";
    QCOMPARE(FiltSpace(text) - text, 2);
    QCOMPARE(*FiltSpace(blanks), '\0');
}

QTEST_APPLESS_MAIN(tst_ModbusFrame)
#include "tst_modbusframe.moc"
