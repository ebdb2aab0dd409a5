#include "telemetry/smc.h"

#include "tests/telemetry/canned_smc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace amperly {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint32_t kFloat = 0x666c7420; // "flt "

class SmcTest : public testing::Test {
protected:
    std::optional<double> read(std::string_view name) { return smc->floatValue(name); }

    CannedSmc controller;
    std::unique_ptr<SMC> smc = SMC::open(controller);
};

TEST(SmcKeyCodeTest, FirstCharacterIsHighest)
{
    EXPECT_EQ(keyCode("PSTR"), 0x50535452u);
    EXPECT_EQ(keyCode("SBAP"), 0x53424150u);
    EXPECT_EQ(keyCode("PDTR"), 0x50445452u);
    EXPECT_EQ(kFloatTypeCode, 0x666c7420u);
}

TEST(SmcKeyCodeTest, ShortNamesGiveSmallNumbers)
{
    EXPECT_EQ(keyCode(""), 0u);
    EXPECT_EQ(keyCode("P"), 0x50u);
    EXPECT_EQ(keyCode("PST"), 0x505354u);
}

TEST(SmcKeyCodeTest, OfALongNameTheLastFourBytesSurvive)
{
    EXPECT_EQ(keyCode("xyPSTR"), keyCode("PSTR"));
    EXPECT_EQ(keyCode("PSTRx"), 0x53545278u);
}

TEST(SmcKeyCodeTest, BytesAboveAsciiAreNotSignExtended)
{
    EXPECT_EQ(keyCode("\xc2\xb5W"), 0x00c2b557u);
    EXPECT_EQ(keyCode("A\xff\xff\xff"), 0x41ffffffu);
}

TEST(SmcOpeningTest, TheControllerIsOpenedOnceByItsClassName)
{
    CannedSmc controller;
    const auto smc = SMC::open(controller);
    ASSERT_NE(smc, nullptr);
    EXPECT_THAT(controller.openedClasses, ElementsAre("AppleSMC"));
    EXPECT_THAT(controller.calls, IsEmpty());
    EXPECT_THAT(controller.closedConnections, IsEmpty());
}

TEST(SmcOpeningTest, EndOfTheClientClosesItsConnection)
{
    CannedSmc controller;
    SMC::open(controller).reset();
    EXPECT_THAT(controller.closedConnections, ElementsAre(CannedSmc::kConnection));
}

TEST(SmcOpeningTest, WithoutAServiceThereIsNoClientAndHandleZeroIsClosed)
{
    CannedSmc controller;
    controller.opening = {.opened = false, .connection = 0};
    EXPECT_EQ(SMC::open(controller), nullptr);
    EXPECT_THAT(controller.closedConnections, ElementsAre(0u));
}

TEST(SmcOpeningTest, RefusedOpeningClosesWhateverHandleItLeft)
{
    CannedSmc controller;
    controller.opening = {.opened = false, .connection = 0x99};
    EXPECT_EQ(SMC::open(controller), nullptr);
    EXPECT_THAT(controller.openedClasses, ElementsAre("AppleSMC"));
    EXPECT_THAT(controller.closedConnections, ElementsAre(0x99u));
}

TEST_F(SmcTest, FirstReadAsksForInformationThenValueAndLaterReadsForTheValueAlone)
{
    controller.hold("PSTR", 12.5f);
    EXPECT_EQ(read("PSTR"), 12.5);
    EXPECT_THAT(controller.conversation(), ElementsAre("PSTR?", "PSTR"));
    EXPECT_EQ(read("PSTR"), 12.5);
    EXPECT_THAT(controller.conversation(), ElementsAre("PSTR?", "PSTR", "PSTR"));
}

TEST_F(SmcTest, EveryCallGoesToTheOpenedConnectionUnderSelectorTwo)
{
    controller.hold("PSTR", 1.0f);
    read("PSTR");
    ASSERT_EQ(controller.calls.size(), 2u);
    for (const CannedSmc::Call& call : controller.calls) {
        EXPECT_EQ(call.connection, CannedSmc::kConnection);
        EXPECT_EQ(call.selector, 2u);
    }
}

TEST_F(SmcTest, InformationRequestHoldsKeyAndCommandAndNothingElse)
{
    controller.hold("PSTR", 1.0f);
    read("PSTR");
    SmcBytes expected{};
    expected[0] = 'R'; // little-endian: the name lies backwards
    expected[1] = 'T';
    expected[2] = 'S';
    expected[3] = 'P';
    expected[42] = 9;
    EXPECT_EQ(controller.calls.at(0).request, expected);
}

TEST_F(SmcTest, ValueRequestPassesSizeTypeAndAttributesBackAndNothingElse)
{
    controller.hold("PSTR", 1.0f);
    controller.describe("PSTR", 4, kFloat, 0xd4);
    // The controller fills more of its reply than anybody asked for.
    SmcBytes& reply = controller.key("PSTR").information.reply;
    for (std::size_t offset = 0; offset < reply.size(); ++offset) {
        if ((offset < 28 || offset > 36) && offset != CannedSmc::kResultOffset)
            reply[offset] = 0xee;
    }
    read("PSTR");

    SmcBytes expected{};
    putWord(expected, 0, 0x50535452);
    putWord(expected, 28, 4);
    expected[32] = ' ';
    expected[33] = 't';
    expected[34] = 'l';
    expected[35] = 'f';
    expected[36] = 0xd4;
    expected[42] = 5;
    EXPECT_EQ(controller.calls.at(1).request, expected);
}

TEST_F(SmcTest, KeyWhoseInformationWasRefusedIsNeverAskedForAgain)
{
    controller.hold("PDTR", 45.0f);
    controller.refuse("PDTR");
    EXPECT_EQ(read("PDTR"), std::nullopt);
    controller.key("PDTR").information.reply[CannedSmc::kResultOffset] = 0;
    EXPECT_EQ(read("PDTR"), std::nullopt);
    EXPECT_EQ(controller.calls.size(), 1u);
}

TEST_F(SmcTest, KernelErrorDuringInformationCountsAsRefusal)
{
    controller.hold("PDTR", 45.0f);
    controller.key("PDTR").information.kernelCode = static_cast<std::int32_t>(0xe00002bc);
    EXPECT_EQ(read("PDTR"), std::nullopt);
    EXPECT_EQ(read("PDTR"), std::nullopt);
    EXPECT_EQ(controller.calls.size(), 1u);
}

TEST_F(SmcTest, PositiveKernelCodeIsAnErrorToo)
{
    controller.hold("PDTR", 45.0f);
    controller.key("PDTR").information.kernelCode = 1;
    EXPECT_EQ(read("PDTR"), std::nullopt);
}

TEST_F(SmcTest, SuccessfulCallWithAResultOtherThanZeroIsAFailure)
{
    controller.hold("PSTR", 12.0f);
    controller.key("PSTR").value.reply[CannedSmc::kResultOffset] = 1;
    EXPECT_EQ(read("PSTR"), std::nullopt);
}

TEST_F(SmcTest, OneMissingKeyLeavesTheOthersReadable)
{
    controller.refuse("PDTR");
    controller.hold("PSTR", 12.0f);
    EXPECT_EQ(read("PDTR"), std::nullopt);
    EXPECT_EQ(read("PSTR"), 12.0);
}

TEST_F(SmcTest, TypeOtherThanFloatReadsAsNothingAndOnlyTheFirstReadTouchesTheKernel)
{
    controller.describe("PSTR", 4, fourCharacters("ui32"));
    EXPECT_EQ(read("PSTR"), std::nullopt);
    EXPECT_EQ(read("PSTR"), std::nullopt);
    EXPECT_THAT(controller.conversation(), ElementsAre("PSTR?"));
}

TEST_F(SmcTest, SizeOtherThanFourReadsAsNothingAndOnlyTheFirstReadTouchesTheKernel)
{
    for (const std::uint32_t size : {0u, 2u, 5u, 8u, 0x04000000u}) {
        CannedSmc fresh;
        fresh.describe("PSTR", size, kFloat);
        const auto client = SMC::open(fresh);
        EXPECT_EQ(client->floatValue("PSTR"), std::nullopt) << size;
        EXPECT_EQ(client->floatValue("PSTR"), std::nullopt) << size;
        EXPECT_THAT(fresh.conversation(), ElementsAre("PSTR?")) << size;
    }
}

TEST_F(SmcTest, FloatTypeWithoutItsTrailingBlankIsAnotherType)
{
    controller.describe("PSTR", 4, 0x00666c74);
    EXPECT_EQ(read("PSTR"), std::nullopt);
}

TEST_F(SmcTest, ValueThatFailedOnceIsAskedForAgain)
{
    controller.hold("PSTR", 12.0f);
    controller.refuseValue("PSTR");
    EXPECT_EQ(read("PSTR"), std::nullopt);
    controller.allowValue("PSTR");
    EXPECT_EQ(read("PSTR"), 12.0);
    EXPECT_THAT(controller.conversation(), ElementsAre("PSTR?", "PSTR", "PSTR"));
}

TEST_F(SmcTest, KernelErrorDuringTheValueCountsForThisReadOnly)
{
    controller.hold("PSTR", 12.0f);
    controller.key("PSTR").value.kernelCode = static_cast<std::int32_t>(0xe00002c0);
    EXPECT_EQ(read("PSTR"), std::nullopt);
    controller.key("PSTR").value.kernelCode = 0;
    EXPECT_EQ(read("PSTR"), 12.0);
}

TEST_F(SmcTest, StatusIsNotLookedAt)
{
    controller.hold("PSTR", 12.0f);
    controller.key("PSTR").information.reply[CannedSmc::kStatusOffset] = 0xff;
    controller.key("PSTR").value.reply[CannedSmc::kStatusOffset] = 0xff;
    EXPECT_EQ(read("PSTR"), 12.0);
}

TEST_F(SmcTest, PayloadIsALittleEndianFloat)
{
    controller.key("PSTR").value.reply[48 + 2] = 0x80; // 00 00 80 BF
    controller.key("PSTR").value.reply[48 + 3] = 0xbf;
    EXPECT_EQ(read("PSTR"), -1.0);
}

TEST_F(SmcTest, ZeroIsAValue)
{
    controller.holdBits("PSTR", 0x00000000);
    EXPECT_EQ(read("PSTR"), 0.0);
}

TEST_F(SmcTest, PayloadBeyondItsFirstFourBytesDoesNotCount)
{
    controller.hold("PSTR", 12.0f);
    SmcBytes& reply = controller.key("PSTR").value.reply;
    std::fill(reply.begin() + 52, reply.end(), std::uint8_t{0xff});
    EXPECT_EQ(read("PSTR"), 12.0);
}

TEST_F(SmcTest, NoExponentFullOfOnesIsAValue)
{
    // Both infinities, the quiet and a signalling not-a-number, and the smallest payload of one.
    for (const std::uint32_t bits : {0x7f800000u, 0xff800000u, 0x7fc00000u, 0x7fa00000u, 0xff800001u}) {
        controller.holdBits("PSTR", bits);
        EXPECT_EQ(read("PSTR"), std::nullopt) << std::hex << bits;
    }
    controller.hold("PSTR", 12.0f);
    EXPECT_EQ(read("PSTR"), 12.0) << "not remembered as missing";
}

TEST_F(SmcTest, FiniteExtremesAreWidenedExactly)
{
    using Limits = std::numeric_limits<float>;
    for (const float watts : {0.1f, -37.3f, Limits::max(), Limits::lowest(), Limits::denorm_min()}) {
        controller.hold("PSTR", watts);
        EXPECT_EQ(read("PSTR"), static_cast<double>(watts));
    }
}

TEST_F(SmcTest, NamesThatFoldToTheSameCodeAreTheSameKey)
{
    controller.hold("PSTR", 12.0f);
    EXPECT_EQ(read("PSTR"), 12.0);
    EXPECT_EQ(read("total PSTR"), 12.0);
    EXPECT_THAT(controller.conversation(), ElementsAre("PSTR?", "PSTR", "PSTR"));
}

TEST_F(SmcTest, EmptyNameIsTheKeyWithCodeZero)
{
    controller.key(0u);
    EXPECT_EQ(read(""), 0.0);
    EXPECT_EQ(controller.calls.size(), 2u);
}

} // namespace
} // namespace amperly
