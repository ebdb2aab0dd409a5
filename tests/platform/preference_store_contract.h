// What holds for every preference store. A store's test instantiates the suite with a maker:
// a type whose make() gives a fresh, empty store for as long as the maker lives.
#pragma once

#include "platform/preference_store.h"

#include <gtest/gtest.h>

#include <vector>

namespace amperly {

template <typename Maker>
class PreferenceStoreContract : public testing::Test {
protected:
    Maker maker;
    PreferenceStore& store = maker.make();
    int announcements = 0;
    Subscription subscription = store.onDidChange([this] { ++announcements; });
};

TYPED_TEST_SUITE_P(PreferenceStoreContract);

TYPED_TEST_P(PreferenceStoreContract, UnknownKeyReadsAsNothing)
{
    EXPECT_EQ(this->store.text("none"), std::nullopt);
    EXPECT_EQ(this->store.integer("none"), 0);
    EXPECT_FALSE(this->store.boolean("none"));
    EXPECT_EQ(this->store.real("none"), 0.0);
}

TYPED_TEST_P(PreferenceStoreContract, ValueCanBeReadAtOnce)
{
    this->store.set("text", std::string("panel"));
    this->store.set("integer", std::int64_t{-2});
    this->store.set("boolean", true);
    this->store.set("real", 0.5);
    EXPECT_EQ(this->store.text("text"), "panel");
    EXPECT_EQ(this->store.integer("integer"), -2);
    EXPECT_TRUE(this->store.boolean("boolean"));
    EXPECT_EQ(this->store.real("real"), 0.5);
}

TYPED_TEST_P(PreferenceStoreContract, ValueOfOneTypeReadsAsAnother)
{
    this->store.set("number", std::string("2"));
    this->store.set("answer", std::string("YES"));
    this->store.set("seconds", 2.0);
    EXPECT_EQ(this->store.integer("number"), 2);
    EXPECT_EQ(this->store.real("number"), 2.0);
    EXPECT_TRUE(this->store.boolean("answer"));
    EXPECT_EQ(this->store.integer("seconds"), 2);
}

TYPED_TEST_P(PreferenceStoreContract, RegisteredValueShowsWhereNothingIsStored)
{
    this->store.registerDefaults({{"decimals", std::int64_t{1}}, {"clickShows", std::string("panel")}});
    EXPECT_EQ(this->store.integer("decimals"), 1);
    this->store.set("decimals", std::int64_t{0});
    EXPECT_EQ(this->store.integer("decimals"), 0);
    this->store.remove("decimals");
    EXPECT_EQ(this->store.integer("decimals"), 1);
    EXPECT_EQ(this->store.text("clickShows"), "panel");
}

TYPED_TEST_P(PreferenceStoreContract, RegistrationsAddUpAndTheLaterOneWins)
{
    this->store.registerDefaults({{"first", std::int64_t{1}}, {"second", std::int64_t{1}}});
    this->store.registerDefaults({{"second", std::int64_t{2}}});
    EXPECT_EQ(this->store.integer("first"), 1);
    EXPECT_EQ(this->store.integer("second"), 2);
}

TYPED_TEST_P(PreferenceStoreContract, StoredTextThatIsNoNumberHidesTheRegisteredOne)
{
    this->store.registerDefaults({{"decimals", std::int64_t{1}}});
    this->store.set("decimals", std::string("many"));
    EXPECT_EQ(this->store.integer("decimals"), 0);
}

TYPED_TEST_P(PreferenceStoreContract, EveryChangeIsAnnounced)
{
    this->store.set("showUnit", true);
    EXPECT_EQ(this->announcements, 1);
    this->store.set("showUnit", false);
    EXPECT_EQ(this->announcements, 2);
    this->store.remove("showUnit");
    EXPECT_EQ(this->announcements, 3);
}

TYPED_TEST_P(PreferenceStoreContract, WhatChangesNothingIsNotAnnounced)
{
    this->store.registerDefaults({{"showUnit", true}});
    this->store.remove("showUnit");
    EXPECT_EQ(this->announcements, 0);
    this->store.set("showUnit", false);
    this->store.set("showUnit", false);
    EXPECT_EQ(this->announcements, 1);
}

TYPED_TEST_P(PreferenceStoreContract, ChangedValueCanBeReadByTheListener)
{
    std::optional<std::string> seen;
    const Subscription follower = this->store.onDidChange([&] { seen = this->store.text("clickShows"); });
    this->store.set("clickShows", std::string("menu"));
    EXPECT_EQ(seen, "menu");
}

TYPED_TEST_P(PreferenceStoreContract, ListenerMayAddListenersAndStoreValues)
{
    int later = 0;
    std::vector<Subscription> added;
    const Subscription adding = this->store.onDidChange([&] {
        if (later == 0)
            added.push_back(this->store.onDidChange([&] { ++later; }));
        this->store.set("answer", std::string("given"));
    });
    this->store.set("question", std::string("asked"));
    EXPECT_GE(later, 1);
    EXPECT_EQ(this->store.text("answer"), "given");
}

REGISTER_TYPED_TEST_SUITE_P(PreferenceStoreContract, UnknownKeyReadsAsNothing, ValueCanBeReadAtOnce,
    ValueOfOneTypeReadsAsAnother, RegisteredValueShowsWhereNothingIsStored,
    RegistrationsAddUpAndTheLaterOneWins, StoredTextThatIsNoNumberHidesTheRegisteredOne,
    EveryChangeIsAnnounced, WhatChangesNothingIsNotAnnounced, ChangedValueCanBeReadByTheListener,
    ListenerMayAddListenersAndStoreValues);

} // namespace amperly
