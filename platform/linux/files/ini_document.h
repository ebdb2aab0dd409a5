// An INI file as its lines, every one kept as it was written: comments, order, other programs'
// sections and the style in which somebody edits survive whatever is changed here. It reads the
// preferences, and what the desktop keeps in this form.
//
// The preferences are the entries before the first section and those in [General]. Of several
// with the same key the last one counts. A line that is no text, or neither comment, section
// nor entry, is damaged: it counts for nothing, and stays where it is until it is dropped.
#pragma once

#include "platform/preference_value.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace amperly {

class IniDocument {
public:
    IniDocument() = default;
    explicit IniDocument(std::string_view bytes);

    /// The file's contents. Of an unchanged document they are the bytes it was made from.
    [[nodiscard]] std::string bytes() const;

    /// The preferences, all as text.
    [[nodiscard]] PreferenceDictionary values() const;

    /// What stands behind `key` in any section, quotes and escapes included, for formats that have
    /// their own; nothing where the key is missing. Entries before the first section are in the
    /// section "". What is returned lives as long as this document stays as it is.
    [[nodiscard]] std::optional<std::string_view> written(
        std::string_view section, std::string_view key) const;

    [[nodiscard]] bool isDamaged() const;

    /// Takes the damaged lines out. The values stay the same.
    void dropDamage();

    /// Gives a preference a value: in its place where it has one, else behind the preferences.
    void set(std::string_view key, std::string_view text);

    /// Takes out every entry of a preference.
    void remove(std::string_view key);

private:
    struct Line {
        enum class Kind { Other, Section, Entry, Damaged };

        explicit Line(std::string written);

        Kind kind = Kind::Other;
        std::string written; ///< without the line feed; a carriage return before it is included
        std::string name; ///< of a section, or an entry's key
        std::size_t valueStart = 0;
        std::size_t valueLength = 0;

        [[nodiscard]] std::string_view value() const;
    };

    using Lines = std::vector<Line>;

    /// Calls `visit` with the index of each preference's line, in order.
    template <typename Visitor>
    void forEachPreference(Visitor visit) const;

    [[nodiscard]] std::size_t positionForNewPreference() const;
    void terminateLastLine() { m_endsWithLineFeed = !m_lines.empty(); }

    std::string m_byteOrderMark;
    Lines m_lines;
    bool m_endsWithLineFeed = false;
};

} // namespace amperly
