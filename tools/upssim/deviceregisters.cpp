#include "deviceregisters.h"

#include "tools/measurementrows.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <new>

using namespace registermap;

namespace {

constexpr int functionReadInputBits = 2;
constexpr int functionReadHolding = 3;
constexpr int functionReadInputs = 4;
constexpr int functionWriteOne = 6;
constexpr int functionWriteSeveral = 16;
constexpr int maxRegisters = 125;
constexpr int maxBits = 2000;

constexpr int illegalFunction = MODBUS_EXCEPTION_ILLEGAL_FUNCTION;
constexpr int illegalAddress = MODBUS_EXCEPTION_ILLEGAL_DATA_ADDRESS;
constexpr int illegalValue = MODBUS_EXCEPTION_ILLEGAL_DATA_VALUE;
constexpr int deviceFailure = MODBUS_EXCEPTION_SLAVE_OR_SERVER_FAILURE;

int exceptionFor(UpsModel::Answer answer)
{
    switch (answer) {
    case UpsModel::Answer::Accepted:
        return 0;
    case UpsModel::Answer::BadValue:
        return illegalValue;
    case UpsModel::Answer::NotNow:
        break;
    }
    return deviceFailure;
}

const RegisterRow *measurementRow(int id)
{
    const auto holds = [id](const RegisterRow &row) {
        return id >= row.id && id < row.id + row.count;
    };
    const auto row = std::find_if(std::begin(measurementRows), std::end(measurementRows), holds);
    return row == std::end(measurementRows) ? nullptr : row;
}

quint16 encoded(const RegisterRow &row, double value)
{
    if (std::isnan(value))
        return quint16(noValue(row.format));
    const double raw = std::round(value / row.scale);
    if (row.format == Format::Signed)
        return quint16(qint16(std::clamp(raw, -32768.0, 32766.0)));
    return quint16(std::clamp(raw, 0.0, 65534.0));
}

} // namespace

RegisterRequest RegisterRequest::fromPdu(const quint8 *pdu)
{
    RegisterRequest request;
    request.function = pdu[0];
    request.address = qFromBigEndian<quint16>(pdu + 1);
    request.count = qFromBigEndian<quint16>(pdu + 3);
    if (request.function == functionWriteOne) {
        request.values = { quint16(request.count) };
        request.count = 1;
    } else if (request.function == functionWriteSeveral) {
        const int announced = pdu[5] / 2;
        for (int i = 0; i < std::min(announced, request.count); ++i)
            request.values.append(qFromBigEndian<quint16>(pdu + 6 + 2 * i));
    }
    return request;
}

DeviceRegisters::DeviceRegisters(UpsModel &model)
    : m_model(model)
    , m_mapping(modbus_mapping_new(0, eventCount, commandRegister + 1,
                                   historyBase + historyCapacity * historyFields),
                modbus_mapping_free)
{
    if (!m_mapping)
        throw std::bad_alloc();
}

int DeviceRegisters::handle(const RegisterRequest &request)
{
    const int most = request.function == functionReadInputBits ? maxBits : maxRegisters;
    if (request.count < 1 || request.count > most)
        return illegalValue;
    switch (request.function) {
    case functionReadInputBits:
        return readEvents(request);
    case functionReadHolding:
        return readSettings(request);
    case functionReadInputs:
        return readInputs(request);
    case functionWriteOne:
    case functionWriteSeveral:
        return write(request);
    }
    return illegalFunction;
}

int DeviceRegisters::readEvents(const RegisterRequest &request)
{
    if (request.address + request.count > eventCount)
        return illegalAddress;
    for (int i = 0; i < eventCount; ++i)
        m_mapping->tab_input_bits[i] = m_model.event(i);
    return 0;
}

int DeviceRegisters::readSettings(const RegisterRequest &request)
{
    const bool command = request.address == commandRegister && request.count == 1;
    if (!command && request.address + request.count > settingCount)
        return illegalAddress;
    for (int i = 0; i < settingCount; ++i)
        m_mapping->tab_registers[i] = m_model.setting(firstSetting + i);
    m_mapping->tab_registers[commandRegister] = m_lastCommand;
    return 0;
}

int DeviceRegisters::readInputs(const RegisterRequest &request)
{
    for (int address = request.address; address < request.address + request.count; ++address) {
        if (!hasInput(address))
            return illegalAddress;
        m_mapping->tab_input_registers[address] = input(address);
    }
    return 0;
}

bool DeviceRegisters::hasInput(int address) const
{
    const int historyEnd = historyBase + int(m_model.history().size()) * historyFields;
    return address < measurementCount || address == historyHeader || address == historyHeader + 1
        || (address >= historyBase && address < historyEnd);
}

quint16 DeviceRegisters::input(int address) const
{
    if (address == historyHeader)
        return quint16(m_model.history().size());
    if (address == historyHeader + 1)
        return m_model.historyGeneration();
    if (address >= historyBase)
        return historyField(address - historyBase);
    const int id = firstMeasurement + address;
    const RegisterRow *const row = measurementRow(id);
    return row ? encoded(*row, m_model.measurement(id)) : 0xFFFF;
}

quint16 DeviceRegisters::historyField(int offset) const
{
    const HistoryRecord &record = m_model.history().at(std::size_t(offset / historyFields));
    const quint16 fields[historyFields] = { record.number,
                                            record.content,
                                            record.status,
                                            record.day,
                                            quint16(record.second & 0xFFFF),
                                            quint16(record.second >> 16),
                                            record.mode };
    return fields[offset % historyFields];
}

int DeviceRegisters::write(const RegisterRequest &request)
{
    if (request.values.size() != request.count)
        return illegalValue;
    if (request.address == commandRegister && request.count == 1)
        return writeCommand(request.values.first());
    const int first = firstSetting + request.address;
    if (request.address + request.count > settingCount)
        return illegalAddress;
    for (int i = 0; i < request.count; ++i) {
        const int refusal = exceptionFor(UpsModel::checkSetting(first + i, request.values[i]));
        if (refusal != 0)
            return refusal;
    }
    for (int i = 0; i < request.count; ++i)
        m_model.writeSetting(first + i, request.values[i]);
    return 0;
}

int DeviceRegisters::writeCommand(quint16 code)
{
    const int refusal = exceptionFor(m_model.command(code));
    if (refusal == 0)
        m_lastCommand = code;
    return refusal;
}
