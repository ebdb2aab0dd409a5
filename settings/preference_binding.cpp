#include "settings/preference_binding.h"

#include "prefs/pref.h"
#include "prefs/reading_style.h"

namespace amperly {

namespace {

template <typename Value>
struct Conversion;

template <>
struct Conversion<bool> {
    static bool read(const PreferenceStore& store, std::string_view key) { return store.boolean(key); }
    static bool from(const PreferenceValue& value) { return asBoolean(value); }
    static PreferenceValue stored(bool value) { return value; }
};

template <>
struct Conversion<std::int64_t> {
    static std::int64_t read(const PreferenceStore& store, std::string_view key)
    {
        return store.integer(key);
    }
    static std::int64_t from(const PreferenceValue& value) { return asInteger(value); }
    static PreferenceValue stored(std::int64_t value) { return value; }
};

template <>
struct Conversion<double> {
    static double read(const PreferenceStore& store, std::string_view key) { return store.real(key); }
    static double from(const PreferenceValue& value) { return asReal(value); }
    static PreferenceValue stored(double value) { return value; }
};

template <>
struct Conversion<std::string> {
    static std::optional<std::string> read(const PreferenceStore& store, std::string_view key)
    {
        return store.text(key);
    }
    static std::string from(const PreferenceValue& value) { return asText(value); }
    static PreferenceValue stored(const std::string& value) { return value; }
};

template <>
struct Conversion<ReadingStyle> {
    static std::optional<ReadingStyle> read(const PreferenceStore& store, std::string_view key)
    {
        return readingStyle(store.text(key).value_or(""));
    }
    static std::optional<ReadingStyle> from(const PreferenceValue& value)
    {
        return readingStyle(asText(value));
    }
    static PreferenceValue stored(ReadingStyle value) { return std::string(rawValue(value)); }
};

} // namespace

template <typename Value>
PreferenceBinding<Value>::PreferenceBinding(std::string_view key, PreferenceStore& store)
    : m_key(key), m_store(&store)
{
}

template <typename Value>
std::optional<Value> PreferenceBinding<Value>::value() const
{
    // Every value can be asked for as text, so a key without one is neither stored nor registered.
    if (m_store->text(m_key))
        return Conversion<Value>::read(*m_store, m_key);
    const auto row = Pref::defaults().find(m_key);
    if (row == Pref::defaults().end())
        return std::nullopt;
    return Conversion<Value>::from(row->second);
}

template <typename Value>
void PreferenceBinding<Value>::set(const Value& value) const
{
    m_store->set(m_key, Conversion<Value>::stored(value));
}

template class PreferenceBinding<bool>;
template class PreferenceBinding<std::int64_t>;
template class PreferenceBinding<double>;
template class PreferenceBinding<std::string>;
template class PreferenceBinding<ReadingStyle>;

} // namespace amperly
