#include "deviceregisters.h"

#include "measurementrows.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace upssim {

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

RegisterRequest RegisterRequest::fromAdu(const modbus::Adu &adu)
{
    constexpr int fixed = 4; // address, and count or value
    RegisterRequest request;
    request.function = adu.function();
    const bool several = request.function == functionWriteSeveral;
    const int size = adu.dataSize();
    if (several ? size <= fixed || size != fixed + 1 + adu.data()[fixed] : size != fixed)
        return request;
    request.address = adu.word(0);
    request.count = adu.word(2);
    if (request.function == functionWriteOne) {
        request.values = { quint16(request.count) };
        request.count = 1;
    }
    for (int at = fixed + 1; several && at + 1 < size; at += 2)
        request.values.append(quint16(adu.word(at)));
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
    const bool countAllowed = request.count >= 1 && request.count <= most;
    switch (request.function) {
    case functionReadInputBits:
        return countAllowed ? readEvents(request) : illegalValue;
    case functionReadHolding:
        return countAllowed ? readSettings(request) : illegalValue;
    case functionReadInputs:
        return countAllowed ? readInputs(request) : illegalValue;
    case functionWriteOne:
    case functionWriteSeveral:
        return countAllowed ? write(request) : illegalValue;
    }
    return illegalFunction;
}

int DeviceRegisters::readEvents(const RegisterRequest &request)
{
    if (request.address + request.count > eventCount)
        return illegalAddress;
    for (int i = 0; i < eventCount; ++i)
        m_mapping->tab_input_bits[i] = *value(firstEvent + i) != 0;
    return 0;
}

int DeviceRegisters::readSettings(const RegisterRequest &request)
{
    const bool command = request.address == commandRegister && request.count == 1;
    if (!command && request.address + request.count > settingCount)
        return illegalAddress;
    for (int i = 0; i < settingCount; ++i)
        m_mapping->tab_registers[i] = *value(firstSetting + i);
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
    return *value(firstMeasurement + address);
}

std::optional<quint16> DeviceRegisters::value(int id) const
{
    const auto forced = m_forced.find(id);
    if (forced != m_forced.end())
        return *forced;
    if (id >= firstEvent && id < firstEvent + eventCount)
        return quint16(m_model.event(id - firstEvent));
    if (id >= firstSetting && id < firstSetting + settingCount)
        return m_model.setting(id);
    if (id >= firstMeasurement && id < firstMeasurement + measurementCount)
        return measurement(id);
    return {};
}

bool DeviceRegisters::force(int id, quint16 raw)
{
    const bool known = value(id).has_value();
    if (known)
        m_forced.insert(id, raw);
    return known;
}

quint16 DeviceRegisters::measurement(int id) const
{
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
    const bool command = request.address == commandRegister && request.count == 1;
    m_lastWrite = { command, command ? 0 : firstSetting + request.address, request.values, 0 };
    ++m_writeCount;
    if (m_refusals == 0)
        m_lastWrite.exception = carryOut(request);
    else
        m_lastWrite.exception = deviceFailure;
    m_refusals -= m_refusals > 0 ? 1 : 0;
    return m_lastWrite.exception;
}

int DeviceRegisters::carryOut(const RegisterRequest &request)
{
    if (request.values.size() != request.count)
        return illegalValue;
    if (m_lastWrite.command)
        return writeCommand(request.values.first());
    if (request.address + request.count > settingCount)
        return illegalAddress;
    return writeSettings(m_lastWrite.id, request.values);
}

int DeviceRegisters::writeSettings(int first, const QVector<quint16> &values)
{
    for (int i = 0; i < values.size(); ++i) {
        const int refusal = exceptionFor(m_model.checkSetting(first + i, values[i]));
        if (refusal != 0)
            return refusal;
    }
    for (int i = 0; i < values.size(); ++i) {
        m_model.writeSetting(first + i, values[i]);
        m_forced.remove(first + i);
    }
    return 0;
}

int DeviceRegisters::writeCommand(quint16 code)
{
    const int refusal = exceptionFor(m_model.command(code));
    if (refusal == 0)
        m_lastCommand = code;
    return refusal;
}

} // namespace upssim
