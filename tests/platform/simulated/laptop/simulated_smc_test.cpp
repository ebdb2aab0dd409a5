#include "platform/simulated/laptop/simulated_smc.h"

#include "platform/simulated/laptop/simulated_laptop.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>

namespace amperly {
namespace {

using Record = std::array<std::byte, kSmcRecordSize>;

constexpr std::uint32_t kPstr = 0x50535452;
constexpr std::uint32_t kSbap = 0x53424150;
constexpr std::uint32_t kPdtr = 0x50445452;
constexpr std::uint32_t kBuic = 0x42554943;
constexpr std::uint32_t kFloatType = 0x666c7420;

template <typename Value>
void put(Record& record, std::size_t offset, Value value)
{
    std::memcpy(record.data() + offset, &value, sizeof value);
}

template <typename Value>
Value get(const Record& record, std::size_t offset)
{
    Value value{};
    std::memcpy(&value, record.data() + offset, sizeof value);
    return value;
}

class SimulatedSmcTest : public testing::Test {
protected:
    SimulatedSmcTest()
    {
        laptop.setLoad(12.0);
        laptop.plugIn(AdapterWatts{67});
    }

    std::int32_t send(std::uint32_t key, std::uint8_t command, std::uint32_t size = 4)
    {
        Record request{};
        put(request, 0, key);
        put(request, 28, size);
        put(request, 42, command);
        return smc.callStruct(connection, 2, request, reply);
    }
    std::uint8_t result() const { return get<std::uint8_t>(reply, 40); }
    float watts(std::uint32_t key)
    {
        EXPECT_EQ(send(key, 5), SimulatedSmc::kSuccess);
        EXPECT_EQ(result(), 0);
        return get<float>(reply, 48);
    }

    SimulatedLaptop laptop;
    SimulatedSmc& smc = laptop.smc();
    std::uint32_t connection = smc.open("AppleSMC").connection;
    Record reply{};
};

TEST_F(SimulatedSmcTest, InformationTellsSizeTypeAndAttributes)
{
    reply.fill(std::byte{0xaa});
    EXPECT_EQ(send(kPstr, 9), SimulatedSmc::kSuccess);
    Record expected{};
    put(expected, 0, kPstr);
    put(expected, 28, 4);
    put(expected, 32, kFloatType);
    put(expected, 36, std::uint8_t{0x80});
    EXPECT_EQ(reply, expected);
}

TEST_F(SimulatedSmcTest, ValuesAreTheLaptopsFlowsTheBatteryPositiveWhileItDelivers)
{
    EXPECT_EQ(watts(kPstr), 12.0f);
    EXPECT_EQ(watts(kPdtr), 67.0f);
    EXPECT_EQ(watts(kSbap), -55.0f);
    laptop.unplug();
    EXPECT_EQ(watts(kPdtr), 0.0f);
    EXPECT_EQ(watts(kSbap), 12.0f);
}

TEST_F(SimulatedSmcTest, ChargeIsAKeyOfOneByte)
{
    laptop.setPercent(73.0);
    EXPECT_EQ(send(kBuic, 9), SimulatedSmc::kSuccess);
    EXPECT_EQ(get<std::uint32_t>(reply, 28), 1u);
    EXPECT_EQ(send(kBuic, 5, 1), SimulatedSmc::kSuccess);
    EXPECT_EQ(get<std::uint8_t>(reply, 48), 73);
}

TEST_F(SimulatedSmcTest, UnknownKeyAndUnknownCommandGetAResultCode)
{
    EXPECT_EQ(send(0x41424344, 9), SimulatedSmc::kSuccess);
    EXPECT_EQ(result(), SimulatedSmc::kKeyNotFound);
    EXPECT_EQ(send(0x41424344, 5), SimulatedSmc::kSuccess);
    EXPECT_EQ(result(), SimulatedSmc::kKeyNotFound);
    EXPECT_EQ(send(kPstr, 7), SimulatedSmc::kSuccess);
    EXPECT_EQ(result(), SimulatedSmc::kBadCommand);
}

TEST_F(SimulatedSmcTest, AValueAskedForInAnotherSizeIsRefused)
{
    EXPECT_EQ(send(kPstr, 5, 2), SimulatedSmc::kSuccess);
    EXPECT_EQ(result(), SimulatedSmc::kSizeMismatch);
}

TEST_F(SimulatedSmcTest, OtherSelectorsAreRefusedByTheKernel)
{
    EXPECT_EQ(smc.callStruct(connection, 1, Record{}, reply), SimulatedSmc::kBadArgument);
}

TEST_F(SimulatedSmcTest, OtherClassesCannotBeOpened)
{
    EXPECT_FALSE(smc.open("AppleSmartBattery").opened);
    EXPECT_EQ(smc.open("").connection, 0u);
    EXPECT_EQ(smc.openHandles(), 1);
    EXPECT_EQ(smc.openings(), 3);
}

TEST_F(SimulatedSmcTest, RefusedClassCannotBeOpenedButOpenHandlesStay)
{
    laptop.refuse("AppleSMC");
    EXPECT_FALSE(smc.open("AppleSMC").opened);
    EXPECT_EQ(watts(kPstr), 12.0f);
}

TEST_F(SimulatedSmcTest, ALostControllerCannotBeOpenedAndAnswersNoMoreUntilItIsBack)
{
    laptop.loseController();
    EXPECT_FALSE(smc.open("AppleSMC").opened);
    EXPECT_EQ(send(kPstr, 5), SimulatedSmc::kNoDevice);
    laptop.restoreController();
    EXPECT_EQ(watts(kPstr), 12.0f);
}

TEST_F(SimulatedSmcTest, AClosedHandleAnswersNoMore)
{
    const std::uint32_t other = smc.open("AppleSMC").connection;
    EXPECT_NE(other, connection);
    smc.close(other);
    EXPECT_EQ(watts(kPstr), 12.0f);
    smc.close(connection);
    EXPECT_EQ(send(kPstr, 5), SimulatedSmc::kNotOpen);
    EXPECT_EQ(smc.openHandles(), 0);
    EXPECT_EQ(smc.misuses(), 1);
}

TEST_F(SimulatedSmcTest, ClosingTwiceIsAMisuseAndClosingZeroIsNot)
{
    smc.close(0);
    smc.close(connection);
    EXPECT_EQ(smc.misuses(), 0);
    smc.close(connection);
    EXPECT_EQ(smc.misuses(), 1);
    EXPECT_EQ(smc.closings(), 3);
}

TEST_F(SimulatedSmcTest, CallsAreCountedByKind)
{
    send(kPstr, 9);
    send(kPstr, 5);
    send(kSbap, 5);
    send(kSbap, 3);
    EXPECT_EQ(smc.informationCalls(), 1);
    EXPECT_EQ(smc.valueCalls(), 2);
    EXPECT_EQ(smc.calls(), 4);
}

TEST_F(SimulatedSmcTest, ARefusedKeyIsNotThereUntilItBehaves)
{
    laptop.refuse("PDTR");
    send(kPdtr, 9);
    EXPECT_EQ(result(), SimulatedSmc::kKeyNotFound);
    EXPECT_EQ(watts(kPstr), 12.0f);
    laptop.behave("PDTR");
    EXPECT_EQ(watts(kPdtr), 67.0f);
}

TEST_F(SimulatedSmcTest, AKeyMayTellItsTypeAndRefuseItsValue)
{
    laptop.refuseValue("PDTR");
    send(kPdtr, 9);
    EXPECT_EQ(result(), 0);
    send(kPdtr, 5);
    EXPECT_EQ(result(), SimulatedSmc::kNotReadable);
}

TEST_F(SimulatedSmcTest, AKeyOfTheWrongTypeSaysSo)
{
    laptop.giveWrongType("SBAP");
    send(kSbap, 9);
    EXPECT_EQ(get<std::uint32_t>(reply, 32), 0x75693332u);
    EXPECT_EQ(get<std::uint32_t>(reply, 28), 4u);
}

TEST_F(SimulatedSmcTest, AnInfiniteKeyIsAFloatThatIsInfinite)
{
    laptop.giveInfinity("PSTR");
    send(kPstr, 9);
    EXPECT_EQ(get<std::uint32_t>(reply, 32), kFloatType);
    EXPECT_TRUE(std::isinf(watts(kPstr)));
}

TEST_F(SimulatedSmcTest, WithoutABatteryItsKeysAreNotThere)
{
    laptop.removeBattery();
    for (const std::uint32_t key : {kSbap, kBuic}) {
        send(key, 9);
        EXPECT_EQ(result(), SimulatedSmc::kKeyNotFound);
    }
    EXPECT_EQ(watts(kPstr), 12.0f);
}

} // namespace
} // namespace amperly
