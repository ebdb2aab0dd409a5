// A controller's driver may answer anything. Whatever it answers, a key reads as a finite number
// or as nothing, costs as many calls as its history says, and is asked for in records that hold
// nothing but what belongs there. A second, plainer account of the protocol says which.

#include "telemetry/smc.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <map>

namespace {

using amperly::kSmcRecordSize;

constexpr std::uint32_t kFloatType = 0x666c7420;
constexpr std::uint32_t kConnection = 77;
constexpr std::size_t kKeyAt = 0;
constexpr std::size_t kSizeAt = 28;
constexpr std::size_t kTypeAt = 32;
constexpr std::size_t kAttributesAt = 36;
constexpr std::size_t kResultAt = 40;
constexpr std::size_t kCommandAt = 42;
constexpr std::size_t kValueAt = 48;

using Record = std::array<std::uint8_t, kSmcRecordSize>;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

template <typename Value>
Value get(const Record& record, std::size_t offset)
{
    Value value{};
    std::memcpy(&value, record.data() + offset, sizeof value);
    return value;
}

template <typename Value>
void put(Record& record, std::size_t offset, Value value)
{
    std::memcpy(record.data() + offset, &value, sizeof value);
}

/// The fuzzer's bytes, zeros after their end.
class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) { }

    [[nodiscard]] bool atEnd() const { return m_next >= m_size; }
    std::uint8_t take() { return atEnd() ? std::uint8_t{0} : m_data[m_next++]; }
    void fill(Record& record, std::size_t offset, std::size_t length)
    {
        for (std::size_t index = offset; index < offset + length; ++index)
            record[index] = take();
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_next = 0;
};

struct Answer {
    std::int32_t kernelCode = 0;
    Record reply{};

    [[nodiscard]] bool succeeded() const { return kernelCode == 0 && reply[kResultAt] == 0; }
};

class ArbitrarySmc : public amperly::SmcService {
public:
    explicit ArbitrarySmc(Bytes& bytes) : m_bytes(bytes) { }

    int calls = 0;
    int closings = 0;
    std::array<Record, 2> requests{};
    std::array<Answer, 2> answers{};

    amperly::SmcOpening open(std::string_view) override
    {
        return {.opened = true, .connection = kConnection};
    }

    std::int32_t callStruct(std::uint32_t connection, std::uint32_t selector,
        std::span<const std::byte, kSmcRecordSize> request,
        std::span<std::byte, kSmcRecordSize> reply) override
    {
        require(connection == kConnection && selector == 2 && calls < 2);
        const auto call = static_cast<std::size_t>(calls++);
        std::memcpy(requests[call].data(), request.data(), kSmcRecordSize);
        answers[call] = answer();
        std::memcpy(reply.data(), answers[call].reply.data(), kSmcRecordSize);
        return answers[call].kernelCode;
    }

    void close(std::uint32_t connection) override
    {
        require(connection == kConnection);
        ++closings;
    }

private:
    /// Mostly near a good one: arbitrary records alone would hardly ever describe a float.
    Answer answer()
    {
        const std::uint8_t kind = m_bytes.take();
        Answer answer;
        if (kind & 1)
            m_bytes.fill(answer.reply, 0, kSmcRecordSize);
        if (kind & 2)
            answer.kernelCode = static_cast<std::int32_t>(0xe0000200u | m_bytes.take());
        if (kind & 4)
            answer.reply[kResultAt] = m_bytes.take();
        if (kind & 8)
            put(answer.reply, kSizeAt, std::uint32_t{4});
        if (kind & 16)
            put(answer.reply, kTypeAt, kFloatType);
        if (kind & 32)
            answer.reply[kAttributesAt] = m_bytes.take();
        if (kind & 64)
            m_bytes.fill(answer.reply, kValueAt, 4);
        return answer;
    }

    Bytes& m_bytes;
};

/// What the client should know of a key after having asked for it.
struct Known {
    bool missing = false;
    bool isFloat = false;
    std::uint8_t attributes = 0;
};

Record informationRequest(std::uint32_t key)
{
    Record request{};
    put(request, kKeyAt, key);
    put(request, kCommandAt, std::uint8_t{9});
    return request;
}

Record valueRequest(std::uint32_t key, const Known& known)
{
    Record request{};
    put(request, kKeyAt, key);
    put(request, kSizeAt, std::uint32_t{4});
    put(request, kTypeAt, kFloatType);
    put(request, kAttributesAt, known.attributes);
    put(request, kCommandAt, std::uint8_t{5});
    return request;
}

void readOnce(amperly::SMC& smc, ArbitrarySmc& service, std::string_view name, std::uint32_t key,
    std::map<std::uint32_t, Known>& knowledge)
{
    service.calls = 0;
    const std::optional<double> value = smc.floatValue(name);
    require(!value || std::isfinite(*value));

    std::size_t expectedCalls = 0;
    auto known = knowledge.find(key);
    if (known == knowledge.end()) {
        require(service.calls >= 1 && service.requests[0] == informationRequest(key));
        const Answer& answer = service.answers[expectedCalls++];
        const bool isFloat = get<std::uint32_t>(answer.reply, kSizeAt) == 4
            && get<std::uint32_t>(answer.reply, kTypeAt) == kFloatType;
        known = knowledge
                    .emplace(key,
                        Known{.missing = !answer.succeeded(),
                            .isFloat = isFloat,
                            .attributes = answer.reply[kAttributesAt]})
                    .first;
    }
    if (!known->second.missing && known->second.isFloat) {
        require(static_cast<std::size_t>(service.calls) == expectedCalls + 1);
        require(service.requests[expectedCalls] == valueRequest(key, known->second));
        const Answer& answer = service.answers[expectedCalls++];
        const float sent = get<float>(answer.reply, kValueAt);
        if (answer.succeeded() && std::isfinite(sent))
            require(value == static_cast<double>(sent));
        else
            require(!value);
    } else {
        require(!value);
    }
    require(static_cast<std::size_t>(service.calls) == expectedCalls);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    struct Name {
        std::string_view text;
        std::uint32_t key;
    };
    constexpr std::array<Name, 6> kNames{{{"PSTR", 0x50535452}, {"SBAP", 0x53424150}, {"PDTR", 0x50445452},
        {"", 0}, {"a longer PSTR", 0x50535452}, {"\xff", 0xff}}};

    Bytes bytes(data, size);
    ArbitrarySmc service(bytes);
    {
        const std::unique_ptr<amperly::SMC> smc = amperly::SMC::open(service);
        std::map<std::uint32_t, Known> knowledge;
        while (!bytes.atEnd()) {
            const Name& name = kNames[bytes.take() % kNames.size()];
            readOnce(*smc, service, name.text, name.key, knowledge);
        }
    }
    require(service.closings == 1);
    return 0;
}
