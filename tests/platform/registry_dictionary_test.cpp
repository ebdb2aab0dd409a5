#include "platform/registry.h"

#include <gtest/gtest.h>

namespace amperly {
namespace {

TEST(RegistryDictionaryTest, WhatIsNotThereIsNothing)
{
    EXPECT_EQ(RegistryDictionary().find("Watts"), RegistryScalar());
    EXPECT_TRUE(RegistryDictionary().empty());
}

TEST(RegistryDictionaryTest, NamesOfAnyLengthAreFound)
{
    RegistryDictionary dictionary;
    for (const std::size_t length : {0U, 1U, 22U, 23U, 24U, 200U})
        dictionary.add(std::string(length, 'x'), static_cast<std::int64_t>(length));
    for (const std::size_t length : {0U, 1U, 22U, 23U, 24U, 200U})
        EXPECT_EQ(
            dictionary.find(std::string(length, 'x')), RegistryScalar(static_cast<std::int64_t>(length)));
    EXPECT_EQ(dictionary.find(std::string(25, 'x')), RegistryScalar());
    EXPECT_EQ(dictionary.size(), 6U);
}

TEST(RegistryDictionaryTest, MoreEntriesThanFitInsideAreFound)
{
    RegistryDictionary dictionary;
    for (std::int64_t index = 0; index < 20; ++index)
        dictionary.add("entry" + std::to_string(index), index);
    for (std::int64_t index = 0; index < 20; ++index)
        EXPECT_EQ(dictionary.find("entry" + std::to_string(index)), RegistryScalar(index));
}

TEST(RegistryDictionaryTest, NameThatIsThereKeepsItsFirstValue)
{
    RegistryDictionary dictionary;
    dictionary.add("Watts", std::int64_t{65});
    dictionary.add("Watts", std::int64_t{100});
    EXPECT_EQ(dictionary.find("Watts"), RegistryScalar(std::int64_t{65}));
    EXPECT_EQ(dictionary.size(), 1U);
}

} // namespace
} // namespace amperly
