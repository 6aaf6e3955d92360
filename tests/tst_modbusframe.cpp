#include "modbus/modbusframe.h"

#include <QTest>

#include <climits>

namespace {

unsigned char *bytesOf(QByteArray &array)
{
    return reinterpret_cast<unsigned char *>(array.data());
}

// A buffer whose bytes behind a frame must stay as they are.
constexpr int room = 64;
constexpr char untouched = '\x5a';

} // namespace

class tst_ModbusFrame : public QObject
{
    Q_OBJECT

private slots:
    void publishedVectors()
    {
        for (const char *hex : { "01030000000ac5cd", "02074112", "1101001300250e84" }) {
            const QByteArray frame = QByteArray::fromHex(hex);
            QByteArray built = frame.chopped(2) + "??";
            QCOMPARE(checkModbufCRC(bytesOf(built), built.size()), -1);
            QCOMPARE(setModbusCRC(bytesOf(built), built.size()), 0);
            QCOMPARE(built, frame);
            QCOMPARE(checkModbufCRC(bytesOf(built), built.size()), 0);
        }
    }

    void everyFlippedBitIsFound()
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

    void requests()
    {
        QByteArray frame(room, untouched);
        QCOMPARE(mod_Set_SetBuf(bytesOf(frame), 0x101, 0x10010, -2), 0);
        QCOMPARE(frame.left(9).toHex(), QByteArray("01060010fffe487f5a"));

        // Function code, count, length of the reply.
        const int rows[][3] = { { 3, 125, 255 }, { 4, 1, 7 },        { 2, 12, 6 }, { 2, -12, 4 },
                                { 6, 999, 8 },   { 3, INT_MAX, -1 }, { 1, 8, 0 },  { 16, 8, 0 } };
        for (const auto &row : rows) {
            QCOMPARE(buildCmd(bytesOf(frame), 1, row[0], 0x13, row[1]), row[2]);
            QCOMPARE(checkModbufCRC(bytesOf(frame), 8), 0);
            QCOMPARE(frame.mid(8), QByteArray(room - 8, untouched));
        }
    }

    void writeMultiple()
    {
        const struct
        {
            int count;
            int length;
            const char *start; // of the frame, in hex
        } rows[] = { { 2, 13, "01100010000204 1234abcd" },
                     { 0, 9, "01100010000000" },
                     { -1, 7, "01100010ff" },
                     { -2, 5, "011000" },
                     { -3, 3, "011000" },
                     { -70000, -139991, "" },
                     { INT_MIN, -1, "" },
                     { INT_MAX, -1, "" } };
        const unsigned short values[] = { 0x1234, 0xABCD };
        for (const auto &row : rows) {
            QByteArray frame(room, untouched);
            QCOMPARE(buildCmd16(bytesOf(frame), 1, 0x10, row.count, values), row.length);
            QVERIFY(frame.startsWith(QByteArray::fromHex(row.start)));
            QCOMPARE(checkModbufCRC(bytesOf(frame), row.length), row.length >= 4 ? 0 : -1);
            QVERIFY(frame.endsWith(QByteArray(room - qMax(0, row.length), untouched)));
        }
    }

    void refusals()
    {
        unsigned char buffer[8] = { 0xFE, 0xDC, 0xBA, 0x98 };
        for (const int refused :
             { setModbusCRC(nullptr, 8), checkModbufCRC(nullptr, 8), setModbusCRC(buffer, 3),
               checkModbufCRC(buffer, INT_MIN), mod_Set_SetBuf(nullptr, 1, 2, 3),
               buildCmd(nullptr, 1, 3, 0, 1), buildCmd16(nullptr, 1, 0, 0, nullptr),
               buildCmd16(buffer, 1, 0, 1, nullptr) })
            QCOMPARE(refused, -1);
        QCOMPARE(UINT8_4_to_UINT32(buffer), UINT8_2_to_UINT16(buffer) * 0x10000U + 0xBA98U);
        char text[] = "  \t a";
        char blanks[] = "   ";
        QCOMPARE(FiltSpace(text) - text, 2);
        QCOMPARE(*FiltSpace(blanks), '\0');
    }
};

QTEST_APPLESS_MAIN(tst_ModbusFrame)
#include "tst_modbusframe.moc"
