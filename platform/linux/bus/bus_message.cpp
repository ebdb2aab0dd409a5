#include "platform/linux/bus/bus_message.h"

namespace amperly {

void BusWriter::writeBasic(char type, const void* value)
{
    if (m_result >= 0)
        m_result = sd_bus_message_append_basic(m_message, type, value);
}

void BusWriter::write(bool value)
{
    const int integer = value ? 1 : 0;
    writeBasic('b', &integer);
}

void BusWriter::write(const std::vector<int>& values)
{
    if (m_result >= 0)
        m_result = sd_bus_message_append_array(m_message, 'i', values.data(), values.size() * sizeof(int));
}

void BusWriter::variant(bool value)
{
    variant("b", [&] { write(value); });
}

void BusWriter::variant(const char* value)
{
    variant("s", [&] { write(value); });
}

std::span<std::uint8_t> BusWriter::bytes(std::size_t size)
{
    void* room = nullptr;
    if (m_result >= 0)
        m_result = sd_bus_message_append_array_space(m_message, 'y', size, &room);
    return {static_cast<std::uint8_t*>(room), m_result < 0 ? 0 : size};
}

void BusWriter::open(char type, const char* contents)
{
    if (m_result >= 0)
        m_result = sd_bus_message_open_container(m_message, type, contents);
}

void BusWriter::close()
{
    if (m_result >= 0)
        m_result = sd_bus_message_close_container(m_message);
}

BusReply BusReply::to(sd_bus_message* call)
{
    sd_bus_message* reply = nullptr;
    sd_bus_message_new_method_return(call, &reply);
    return BusReply(BusMessage(reply));
}

int BusReply::send(sd_bus_error* error)
{
    if (m_refusal != nullptr)
        return sd_bus_error_set_const(error, SD_BUS_ERROR_INVALID_ARGS, m_refusal);
    return result() < 0 ? result() : sd_bus_send(nullptr, m_message.get(), nullptr);
}

bool BusReader::readBasic(char type, void* value)
{
    return sd_bus_message_read_basic(m_message, type, value) > 0;
}

bool BusReader::read(bool& value)
{
    int integer = 0;
    if (!readBasic('b', &integer))
        return false;
    value = integer != 0;
    return true;
}

bool BusReader::read(std::string_view& value)
{
    const char* text = nullptr;
    if (!readBasic('s', &text))
        return false;
    value = text;
    return true;
}

bool BusReader::read(BusIgnored&)
{
    return sd_bus_message_skip(m_message, nullptr) >= 0;
}

bool BusReader::enter(char type)
{
    return sd_bus_message_enter_container(m_message, type, nullptr) > 0;
}

bool BusReader::leave()
{
    return sd_bus_message_exit_container(m_message) >= 0;
}

bool BusReader::hasMore()
{
    return sd_bus_message_at_end(m_message, 0) == 0;
}

} // namespace amperly
