// BVCountedString: one distinct answer in a tally of answers (see BVCountedStrings), holding the answer
// text, optional caller data and how many times the answer was given.
//
// Entries are shared by identity (std::shared_ptr). While an entry belongs to a BVCountedStrings, changing
// its text with setString() keeps that collection's lookup index right; it can however leave two entries
// of one collection that match each other, and later lookups then answer the earlier of the two.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class BVCountedString;
class BVCountedStrings;

// A list of entries, shared by identity.
using BVCountedStringList = std::vector<std::shared_ptr<BVCountedString>>;

class BVCountedString : public Object, public std::enable_shared_from_this<BVCountedString> {
  public:
    // A new entry with copies of the text and the caller data, and count 1.
    BVCountedString(Text string, Value userInfo);
    // The named form of the constructor; entries are shared by identity.
    [[nodiscard]] static std::shared_ptr<BVCountedString> initWithStringUserInfo(Text string, Value userInfo);

    // Adds 1 to the count and answers the new count.
    std::uint64_t incrementCount();
    // Subtracts 1 from the count unless it is already 0; answers the new count.
    std::uint64_t decrementCount();

    // -1 when this count is greater than the other's, 1 when smaller, 0 when equal: it orders higher
    // counts first, despite its name.
    [[nodiscard]] int sortByCountAscending(const BVCountedString& other) const;
    // The reverse of sortByCountAscending: lower counts first.
    [[nodiscard]] int sortByCountDescending(const BVCountedString& other) const;

    // The answer text as first added (or as last replaced).
    [[nodiscard]] const Text& string() const noexcept { return string_; }
    // Stores a copy of the text; the owning collection's index follows the change.
    void setString(const Text& string);
    // The caller data given when the entry was made (null when none); read-only afterwards.
    [[nodiscard]] const Value& userInfo() const noexcept { return userInfo_; }
    // How many times the answer was added.
    [[nodiscard]] std::uint64_t count() const noexcept { return count_; }
    // Stores the count as given, also 0 (such an entry stays in its collection until removed).
    void setCount(std::uint64_t count) noexcept { count_ = count; }

    // "TEXT (COUNT)".
    [[nodiscard]] Text description() const override;
    // "string" (Text), "userInfo" and "count" (unsigned 64-bit number); nullopt for other keys.
    [[nodiscard]] std::optional<Value> valueForKey(const Text& key) const override;
    // Sets "string" (a Text) or "count" (a number); other keys and kinds throw as the base class does.
    void setValueForKey(const Value& value, const Text& key) override;

  private:
    friend class BVCountedStrings;
    class Indexer;  // the owning collection's index, told around a change of the text

    Text string_;
    Value userInfo_;
    std::uint64_t count_ = 1;
    // The collection's position stamp: entries of a collection are ordered by it.
    std::uint64_t sequence_ = 0;
    std::weak_ptr<Indexer> indexer_;
};

}  // namespace bv
