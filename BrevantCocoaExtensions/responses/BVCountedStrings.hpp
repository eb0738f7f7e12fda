// BVCountedStrings: the tally of free-text answers. Each distinct answer is kept once, as a
// BVCountedString entry with the number of times it was given, in the order in which answers were first
// added.
//
// Matching is decided by the collection's mode: case-insensitive (two texts match when they are equal
// after Unicode case folding, "Paris" = "pArIs" = "PARIS") or exact (code unit by code unit). A lookup
// always answers the FIRST matching entry in list order. The collection keeps a hash index from each
// entry's match key to its entries, so adds and lookups do not walk the list.
//
// Pitfalls kept on purpose:
//   - In case-insensitive mode the spelling first added is the one kept.
//   - countedStringsSortedByCountInAscendingOrder puts the HIGHEST counts first, and the "descending"
//     one the lowest first.
//   - replaceStringWithString (and BVCountedString::setString) may leave two entries with one text;
//     later adds of that text count on the earlier entry.
//   - Changing the matching mode affects later calls only; existing entries are never merged.
//
// The collection owns its list and hands it out read-only; it can be moved but not copied (its entries
// are shared by identity and know which collection indexes them).
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"
#include "BrevantCocoaExtensions/responses/BVCountedString.hpp"

namespace bv {

class BVCountedStrings {
  public:
    // Hands out texts one at a time, then nullopt.
    class StringEnumerator {
      public:
        explicit StringEnumerator(std::vector<Text> strings) : strings_(std::move(strings)) {}
        // The next text, or nullopt after the last.
        std::optional<Text> nextObject();
        // The texts not handed out yet; the enumerator is then exhausted.
        std::vector<Text> allObjects();

      private:
        std::vector<Text> strings_;
        std::size_t next_ = 0;
    };

    // An empty tally; true makes matching case-insensitive, false exact.
    explicit BVCountedStrings(bool operateWithCaseInsensitivity);
    // A tally of the given answers (addStrings), matching as given.
    BVCountedStrings(const std::vector<Text>& strings, bool operateWithCaseInsensitivity);
    // Named forms of the two constructors.
    [[nodiscard]] static BVCountedStrings initByOperateWithCaseInsensitivity(
        bool operateWithCaseInsensitivity);
    [[nodiscard]] static BVCountedStrings initWithStringsOperateWithCaseInsensitivity(
        const std::vector<Text>& strings, bool operateWithCaseInsensitivity);

    // Moving hands over the entries; the moved-from collection is left empty and usable.
    BVCountedStrings(BVCountedStrings&& other);
    BVCountedStrings& operator=(BVCountedStrings&& other);
    BVCountedStrings(const BVCountedStrings&) = delete;
    BVCountedStrings& operator=(const BVCountedStrings&) = delete;
    ~BVCountedStrings();

    // The entries themselves (not a copy), in first-added order.
    [[nodiscard]] const BVCountedStringList& countedStrings() const noexcept { return entries_; }

    [[nodiscard]] bool isOperatingWithCaseInsensitivity() const noexcept;
    // Changes matching for later calls only: entries that now match each other are not merged, and a
    // lookup answers the first of them.
    void setIsOperatingWithCaseInsensitivity(bool isOperatingWithCaseInsensitivity);

    // The text of each entry, in the same order.
    [[nodiscard]] static std::vector<Text> stringsForCountedStrings(
        const BVCountedStringList& countedStrings);
    // The distinct answers in first-added order.
    [[nodiscard]] std::vector<Text> strings() const;
    // An enumerator over strings().
    [[nodiscard]] StringEnumerator stringEnumerator() const;
    // The sum of all counts (wrapping past 2^64); 0 when empty.
    [[nodiscard]] std::uint64_t totalCount() const noexcept;

    // The first entry (list order) whose text matches; nullptr for a null text or no match.
    [[nodiscard]] std::shared_ptr<BVCountedString> countedStringHavingString(
        const std::optional<Text>& string) const;
    // Every entry whose text does not match, in list order; empty for a null text.
    [[nodiscard]] BVCountedStringList countedStringsNotHavingString(const std::optional<Text>& string) const;
    // The count of the first matching entry; 0 when none matches.
    [[nodiscard]] std::uint64_t countForString(const std::optional<Text>& string) const;
    // Every entry whose count is the highest, in list order; empty when there are no entries.
    [[nodiscard]] BVCountedStringList countedStringsWithHighestCount() const;

    // addStringWithUserInfo with null caller data.
    std::shared_ptr<BVCountedString> addString(const std::optional<Text>& string);
    // Counts one more of the first matching entry (keeping its text and caller data) and answers it; else
    // appends a new entry with count 1. A null text changes nothing and answers nullptr.
    std::shared_ptr<BVCountedString> addStringWithUserInfo(const std::optional<Text>& string,
                                                           const Value& userInfo);
    // addString for each text, in order.
    void addStrings(const std::vector<Text>& strings);
    // Counts one less of the first matching entry; an entry whose count is then 0 leaves the list.
    void removeString(const std::optional<Text>& string);
    // Gives the first entry matching `string` the text `newString`, keeping its count and caller data, and
    // answers it; nullptr and no change when nothing matches.
    std::shared_ptr<BVCountedString> replaceStringWithString(const std::optional<Text>& string,
                                                             const Text& newString);

    // A new list sorted stably with sortByCountAscending: HIGHEST count first, ties in list order.
    [[nodiscard]] BVCountedStringList countedStringsSortedByCountInAscendingOrder() const;
    // A new list sorted stably with sortByCountDescending: LOWEST count first, ties in list order.
    [[nodiscard]] BVCountedStringList countedStringsSortedByCountInDescendingOrder() const;

  private:
    class Index;

    [[nodiscard]] BVCountedString* firstMatch(const Text& string) const;
    void erase(BVCountedString& entry);

    BVCountedStringList entries_;  // ordered by the entries' sequence stamps
    std::shared_ptr<Index> index_;
};

}  // namespace bv
