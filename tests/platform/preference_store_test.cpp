#include "platform/memory_preference_store.h"
#include "tests/platform/preference_store_contract.h"

namespace amperly {
namespace {

class MemoryStoreMaker {
public:
    PreferenceStore& make() { return m_store; }

private:
    MemoryPreferenceStore m_store;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, PreferenceStoreContract, MemoryStoreMaker);

TEST(MemoryPreferenceStoreTest, StartsWithWhatAnEarlierRunLeft)
{
    const MemoryPreferenceStore store({{"decimals", std::int64_t{0}}});
    EXPECT_EQ(store.text("decimals"), "0");
}

TEST(PreferenceStoreTest, StandardStoreIsTheOneInForce)
{
    MemoryPreferenceStore outer;
    MemoryPreferenceStore inner;
    const Injected<PreferenceStore> outerInForce(outer);
    {
        const Injected<PreferenceStore> innerInForce(inner);
        EXPECT_EQ(&PreferenceStore::standard(), &inner);
    }
    EXPECT_EQ(&PreferenceStore::standard(), &outer);
}

TEST(PreferenceStoreDeathTest, WithoutAStoreInForceTheProgramEnds)
{
    EXPECT_DEATH((void)PreferenceStore::standard(), "");
}

} // namespace
} // namespace amperly
