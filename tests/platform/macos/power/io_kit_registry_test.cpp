#include "platform/macos/power/io_kit_registry.h"

#include "tests/platform/macos/power/fake_machine_test.h"

namespace amperly {
namespace {

class IoKitRegistryTest : public FakeMachineTest {
protected:
    /// One property as the registry copies it.
    RegistryProperty copied(const fake_mac::Value& value)
    {
        addService("AppleSmartBattery").insert_or_assign("Property", value);
        const RegistryEntry entry = registry.find("AppleSmartBattery");
        const int before = held();
        RegistryProperty property = registry.copyProperty(entry, "Property");
        EXPECT_EQ(held(), before);
        registry.release(entry);
        return property;
    }

    RegistryScalar entryOf(const fake_mac::Value& value)
    {
        const RegistryProperty property = copied(fake_mac::Dictionary{{"Entry", value}});
        return entryIn(std::get<RegistryDictionary>(property), "Entry");
    }

    static bool isNothing(const RegistryProperty& property) { return property.index() == 0; }

    IoKitRegistry registry;
};

TEST_F(IoKitRegistryTest, MissingServiceIsNoEntry)
{
    EXPECT_EQ(registry.find("AppleSmartBattery"), 0U);
    EXPECT_GT(fake_mac::objectsHandedOut(), 0);
}

TEST_F(IoKitRegistryTest, AFoundEntryIsHeldUntilItIsReleased)
{
    addService("AppleSmartBattery");
    const RegistryEntry entry = registry.find("AppleSmartBattery");
    EXPECT_NE(entry, 0U);
    EXPECT_EQ(held(), 1);
    registry.release(entry);
    EXPECT_EQ(held(), 0);
}

TEST_F(IoKitRegistryTest, ReleasingNoEntryDoesNothing)
{
    registry.release(0);
}

TEST_F(IoKitRegistryTest, MissingPropertyIsNothing)
{
    addService("AppleSmartBattery");
    const RegistryEntry entry = registry.find("AppleSmartBattery");
    EXPECT_TRUE(isNothing(registry.copyProperty(entry, "Voltage")));
    registry.release(entry);
}

TEST_F(IoKitRegistryTest, BooleansAreNotNumbers)
{
    EXPECT_EQ(std::get<bool>(copied(true)), true);
    EXPECT_EQ(std::get<bool>(copied(false)), false);
}

TEST_F(IoKitRegistryTest, WholeNumbersKeepTheirSixtyFourBits)
{
    EXPECT_EQ(std::get<std::int64_t>(copied(12000)), 12000);
    EXPECT_EQ(std::get<std::int64_t>(copied(std::int64_t{-500})), -500);
    EXPECT_EQ(std::get<std::int64_t>(copied(std::int64_t{1} << 40)), std::int64_t{1} << 40);
}

TEST_F(IoKitRegistryTest, FloatingNumbersKeepTheirFraction)
{
    EXPECT_EQ(std::get<double>(copied(11.75)), 11.75);
}

TEST_F(IoKitRegistryTest, TextDataAndArraysAreNothing)
{
    EXPECT_TRUE(isNothing(copied("96")));
    EXPECT_TRUE(isNothing(copied(fake_mac::Data{96, 0, 0, 0})));
    EXPECT_TRUE(isNothing(copied(fake_mac::Array{96})));
}

TEST_F(IoKitRegistryTest, DictionariesKeepTheirNumbersAndBooleans)
{
    EXPECT_EQ(entryOf(96), RegistryScalar(std::int64_t{96}));
    EXPECT_EQ(entryOf(9.5), RegistryScalar(9.5));
    EXPECT_EQ(entryOf(true), RegistryScalar(true));
}

TEST_F(IoKitRegistryTest, OtherEntriesOfADictionaryAreNotThere)
{
    EXPECT_EQ(entryOf("96"), RegistryScalar());
    EXPECT_EQ(entryOf(fake_mac::Dictionary{{"Nested", 1}}), RegistryScalar());
    EXPECT_EQ(entryOf(fake_mac::Array{}), RegistryScalar());
}

TEST_F(IoKitRegistryTest, AnEmptyDictionaryIsOne)
{
    EXPECT_TRUE(std::get<RegistryDictionary>(copied(fake_mac::Dictionary{})).empty());
}

TEST_F(IoKitRegistryTest, KeysThatAreNoTextAreLeftOut)
{
    fake_mac::machine().services["AppleSmartBattery"];
    const RegistryEntry entry = registry.find("AppleSmartBattery");
    fake_mac::machine().services["AppleSmartBattery"]["AdapterDetails"] = fake_mac::Dictionary{{"Watts", 96}};
    fake_mac::machine().dictionaryKeysAreNumbers = true;
    EXPECT_TRUE(std::get<RegistryDictionary>(registry.copyProperty(entry, "AdapterDetails")).empty());
    registry.release(entry);
}

TEST_F(IoKitRegistryTest, KeysOfAnyLengthDoNoHarm)
{
    const RegistryProperty property
        = copied(fake_mac::Dictionary{{std::string(127, 'k'), 1}, {std::string(128, 'l'), 2}, {"Watts", 96}});
    const auto& dictionary = std::get<RegistryDictionary>(property);
    EXPECT_EQ(entryIn(dictionary, std::string(127, 'k')), RegistryScalar(std::int64_t{1}));
    EXPECT_EQ(entryIn(dictionary, std::string(128, 'l')), RegistryScalar());
    EXPECT_EQ(entryIn(dictionary, "Watts"), RegistryScalar(std::int64_t{96}));
}

TEST_F(IoKitRegistryTest, NoMemoryForTheNameIsNothing)
{
    addService("AppleSmartBattery")["Voltage"] = 12000;
    const RegistryEntry entry = registry.find("AppleSmartBattery");
    fake_mac::machine().allocationsUntilFailure = 0;
    EXPECT_TRUE(isNothing(registry.copyProperty(entry, "Voltage")));
    registry.release(entry);
}

TEST_F(IoKitRegistryTest, AThousandCopiesHoldNothing)
{
    for (int copy = 0; copy < 1000; ++copy)
        EXPECT_EQ(entryOf(copy), RegistryScalar(std::int64_t{copy}));
    EXPECT_GE(fake_mac::objectsHandedOut(), 5000);
}

} // namespace
} // namespace amperly
