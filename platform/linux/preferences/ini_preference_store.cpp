#include "platform/linux/preferences/ini_preference_store.h"

#include "platform/linux/files/user_file.h"

#include <QAbstractEventDispatcher>

#include <chrono>
#include <utility>

namespace amperly {

namespace {

/// An editor that moves the old file away before it writes the new one is done by then.
constexpr std::chrono::milliseconds kReplacementTime{250};

/// `value` as it is written to the file: the way somebody who edits it would write it.
std::string fileText(const PreferenceValue& value)
{
    if (const bool* const boolean = std::get_if<bool>(&value))
        return *boolean ? "true" : "false";
    std::string text = asText(value);
    // A point tells the reader that fractions are welcome.
    if (std::holds_alternative<double>(value) && text.find('.') == text.npos)
        text += ".0";
    return text;
}

} // namespace

IniPreferenceStore::IniPreferenceStore(std::string path, WarningHandler warn)
    : m_path(std::move(path)), m_warn(std::move(warn)), m_watch(m_path, [this] { readAgain(); })
{
    m_writing.setSingleShot(true);
    m_writing.setInterval(0);
    QObject::connect(&m_writing, &QTimer::timeout, &m_writing, [this] {
        if (writeUnwritten())
            announceChange();
    });
    m_missing.setSingleShot(true);
    m_missing.setInterval(kReplacementTime);
    QObject::connect(&m_missing, &QTimer::timeout, &m_missing, [this] {
        if (readUserFile(m_path).state == UserFile::State::Missing && takeOver(IniDocument()))
            announceChange();
    });
    takeOver(IniDocument(readUserFile(m_path).bytes));
    if (!m_watch.isWatching())
        this->warn("changes made to " + m_path + " by others show at the next start only");
}

IniPreferenceStore::~IniPreferenceStore()
{
    writeUnwritten();
}

void IniPreferenceStore::set(std::string_view key, const PreferenceValue& value)
{
    change(key, fileText(value));
}

void IniPreferenceStore::remove(std::string_view key)
{
    change(key, std::nullopt);
}

void IniPreferenceStore::change(std::string_view key, std::optional<std::string> text)
{
    const bool isChange = assign(key, text ? std::optional<PreferenceValue>(*text) : std::nullopt);
    if (isChange)
        m_unwritten.insert_or_assign(std::string(key), std::move(text));
    bool othersChangedIt = false;
    if (QAbstractEventDispatcher::instance() == nullptr)
        othersChangedIt = writeUnwritten(); // there is no next turn
    else if (!m_unwritten.empty())
        m_writing.start();
    if (isChange || othersChangedIt)
        announceChange();
}

bool IniPreferenceStore::writeUnwritten()
{
    if (m_unwritten.empty())
        return false;
    const WrittenPreferences written = writePreferences(m_path, m_unwritten);
    if (written.error) {
        if (!std::exchange(m_hasToldOfFailure, true))
            warn("couldn't save preferences to " + m_path + ": " + written.error.message());
        return false;
    }
    m_hasToldOfFailure = false;
    if (!written.keptAs.empty())
        warn("not all of " + m_path + " made sense; as it was it is kept as " + written.keptAs);
    m_unwritten.clear();
    m_missing.stop();
    return takeOver(written.document);
}

void IniPreferenceStore::warn(const std::string& line) const
{
    if (m_warn)
        m_warn("Amperly: " + line);
}

void IniPreferenceStore::readAgain()
{
    using State = UserFile::State;
    const UserFile contents = readUserFile(m_path);
    if (contents.state == State::Untouchable)
        return;
    if (contents.state == State::Missing && !isEmpty()) {
        m_missing.start();
        return;
    }
    m_missing.stop();
    if (takeOver(IniDocument(contents.bytes)))
        announceChange();
}

/// The document's values become the stored ones, except where a newer one is still unwritten.
bool IniPreferenceStore::takeOver(const IniDocument& document)
{
    PreferenceDictionary values = document.values();
    for (const auto& [key, text] : m_unwritten) {
        if (text)
            values.insert_or_assign(key, *text);
        else
            values.erase(key);
    }
    return assignAll(std::move(values));
}

} // namespace amperly
