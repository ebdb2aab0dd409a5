#include "platform/macos/power/io_kit_smc_service.h"

#include "telemetry/smc.h"
#include "tests/platform/macos/power/fake_machine_test.h"

#include <bit>
#include <cstring>

namespace amperly {
namespace {

constexpr std::uint32_t kAnyKernelError = 0xe00002bc;

class IoKitSmcServiceTest : public FakeMachineTest {
protected:
    static void addFloat(std::string_view name, float value)
    {
        fake_mac::Data bytes(sizeof value);
        std::memcpy(bytes.data(), &value, sizeof value);
        fake_mac::machine().smcKeys[keyCode(name)] = {.type = kFloatTypeCode, .bytes = bytes};
    }

    IoKitSmcService service;
};

TEST_F(IoKitSmcServiceTest, MachineWithoutControllerOpensNothing)
{
    const SmcOpening opening = service.open("AppleSMC");
    EXPECT_FALSE(opening.opened);
    EXPECT_EQ(opening.connection, 0U);
    EXPECT_GT(fake_mac::objectsHandedOut(), 0);
}

TEST_F(IoKitSmcServiceTest, OpeningKeepsTheConnectionAndNothingElse)
{
    addService("AppleSMC");
    const SmcOpening opening = service.open("AppleSMC");
    EXPECT_TRUE(opening.opened);
    EXPECT_EQ(fake_mac::audit().connections, 1);
    EXPECT_EQ(held(), 0);
    service.close(opening.connection);
}

TEST_F(IoKitSmcServiceTest, RefusedOpeningKeepsNothing)
{
    addService("AppleSMC");
    fake_mac::machine().openResult = kIOReturnNotPrivileged;
    const SmcOpening opening = service.open("AppleSMC");
    EXPECT_FALSE(opening.opened);
    EXPECT_EQ(opening.connection, 0U);
}

TEST_F(IoKitSmcServiceTest, NoMemoryForTheLookUpOpensNothing)
{
    addService("AppleSMC");
    fake_mac::machine().allocationsUntilFailure = 0;
    EXPECT_FALSE(service.open("AppleSMC").opened);
}

TEST_F(IoKitSmcServiceTest, AClientThatCouldNotOpenClosesWhateverHandleItHas)
{
    EXPECT_EQ(SMC::open(service), nullptr);
    EXPECT_THAT(fake_mac::machine().closed, testing::ElementsAre(0U));
}

TEST_F(IoKitSmcServiceTest, TheKernelsCodeComesBack)
{
    addService("AppleSMC");
    const SmcOpening opening = service.open("AppleSMC");
    fake_mac::machine().callResult = std::bit_cast<kern_return_t>(kAnyKernelError);
    std::array<std::byte, kSmcRecordSize> record{};
    EXPECT_EQ(service.callStruct(opening.connection, 2, record, record),
        std::bit_cast<std::int32_t>(kAnyKernelError));
    service.close(opening.connection);
}

TEST_F(IoKitSmcServiceTest, TheDriverRefusesAnotherSelector)
{
    addService("AppleSMC");
    const SmcOpening opening = service.open("AppleSMC");
    std::array<std::byte, kSmcRecordSize> record{};
    EXPECT_EQ(service.callStruct(opening.connection, 3, record, record), kIOReturnBadArgument);
    service.close(opening.connection);
}

TEST_F(IoKitSmcServiceTest, FloatComesThroughTheClient)
{
    addService("AppleSMC");
    addFloat("PSTR", 12.5F);
    const std::unique_ptr<SMC> smc = SMC::open(service);
    ASSERT_NE(smc, nullptr);
    EXPECT_EQ(smc->floatValue("PSTR"), 12.5);
    EXPECT_EQ(smc->floatValue("PDTR"), std::nullopt);
}

TEST_F(IoKitSmcServiceTest, RequestsAreRecordsOfEightyBytesWithEveryFieldInItsPlace)
{
    addService("AppleSMC");
    addFloat("PSTR", 1.0F);
    const std::unique_ptr<SMC> smc = SMC::open(service);
    EXPECT_TRUE(smc->floatValue("PSTR"));

    fake_mac::Data information(80);
    std::memcpy(information.data(), "RTSP", 4); // the code's lowest byte first
    information[42] = 9;
    fake_mac::Data value = information;
    value[28] = 4;
    std::memcpy(value.data() + 32, " tlf", 4);
    value[42] = 5;
    EXPECT_THAT(fake_mac::machine().requests, testing::ElementsAre(information, value));
}

TEST_F(IoKitSmcServiceTest, ThePayloadHasItsWholeThirtyTwoBytes)
{
    static_assert(sizeof(KeyData) == kSmcRecordSize);
    static_assert(offsetof(KeyData, bytes) == 48);
    static_assert(sizeof(KeyData::bytes) == 32);
}

TEST_F(IoKitSmcServiceTest, AThousandReadingsHoldOneConnection)
{
    addService("AppleSMC");
    addFloat("PSTR", 3.0F);
    const std::unique_ptr<SMC> smc = SMC::open(service);
    for (int reading = 0; reading < 1000; ++reading)
        EXPECT_EQ(smc->floatValue("PSTR"), 3.0);
    EXPECT_EQ(fake_mac::audit().connections, 1);
    EXPECT_EQ(held(), 0);
    EXPECT_EQ(fake_mac::machine().requests.size(), 1001U);
}

TEST_F(IoKitSmcServiceTest, TheClientsEndClosesTheConnection)
{
    addService("AppleSMC");
    EXPECT_NE(SMC::open(service), nullptr);
    EXPECT_EQ(fake_mac::audit().connections, 0);
}

} // namespace
} // namespace amperly
