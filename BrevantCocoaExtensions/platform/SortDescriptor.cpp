// Stable sorting by sort keys. Each element's value for each key is turned once into an ordering key (a
// comparison key of its text, a collation key, a number or a date), so that the sort itself compares
// plain keys instead of looking values up and folding case again for every comparison.
#include "BrevantCocoaExtensions/platform/SortDescriptor.hpp"

#include <unicode/coll.h>
#include <unicode/locid.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <string>
#include <variant>

#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/KeyValue.hpp"

namespace bv {

namespace {

// Absent values, text comparison keys (code units), collation keys (bytes), numbers, dates.
using OrderingKey = std::variant<std::monostate, std::u16string, std::string, Number, Date>;

[[noreturn]] void unordered(const SortDescriptor& descriptor, const Value& value) {
    throw InvalidArgumentException("cannot sort by \"" + descriptor.key.toUtf8() + "\" the value " +
                                   value.description().toUtf8());
}

const icu::Collator& currentLocaleCollator() {
    thread_local std::unique_ptr<icu::Collator> collator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::Collator> made(icu::Collator::createInstance(icu::Locale::getDefault(), status));
        if (U_FAILURE(status) || !made)
            throw InternalInconsistencyException("no collator for the current locale");
        return made;
    }();
    return *collator;
}

std::string collationKey(const Text& text) {
    const icu::Collator& collator = currentLocaleCollator();
    icu::UnicodeString source(false, text.units().data(), static_cast<int32_t>(text.length()));
    std::string key(64, '\0');
    for (;;) {
        int32_t needed = collator.getSortKey(source, reinterpret_cast<uint8_t*>(key.data()),
                                             static_cast<int32_t>(key.size()));
        if (needed <= static_cast<int32_t>(key.size())) {
            key.resize(static_cast<std::size_t>(needed));
            return key;
        }
        key.resize(static_cast<std::size_t>(needed));
    }
}

OrderingKey orderingKey(const SortDescriptor& descriptor, const Value& element) {
    using Comparison = SortDescriptor::Comparison;
    std::optional<Value> value = valueForKeyPath(element, descriptor.key);
    if (!value || value->isNull()) return std::monostate{};
    if (const Text* text = value->text()) {
        switch (descriptor.comparison) {
            case Comparison::Compare:
                return text->comparisonKey(CompareMode::Default).units();
            case Comparison::CaseInsensitiveCompare:
                return text->comparisonKey(CompareMode::CaseInsensitive).units();
            case Comparison::LocalizedCompare:
                return collationKey(*text);
        }
    }
    if (const Number* number = value->number();
        number && descriptor.comparison != Comparison::CaseInsensitiveCompare) {
        return *number;
    }
    if (const Date* date = value->get<Date>(); date && descriptor.comparison == Comparison::Compare)
        return *date;
    unordered(descriptor, *value);
}

template <class T>
int threeWay(const T& a, const T& b) {
    return a < b ? -1 : (b < a ? 1 : 0);
}

// Ascending order of two keys of the same kind (or absent).
int compareKeys(const OrderingKey& a, const OrderingKey& b) {
    if (a.index() != b.index()) return a.index() == 0 ? -1 : 1;  // only absence mixes with other kinds
    return std::visit(
        [&b](const auto& left) -> int {
            using Held = std::decay_t<decltype(left)>;
            const Held& right = std::get<Held>(b);
            if constexpr (std::is_same_v<Held, std::monostate>) {
                return 0;
            } else if constexpr (std::is_same_v<Held, Number>) {
                return left.compare(right);
            } else {
                return threeWay(left, right);
            }
        },
        a);
}

int directed(const SortDescriptor& descriptor, int ascendingOrder) {
    return descriptor.ascending ? ascendingOrder : -ascendingOrder;
}

struct Decorated {
    std::size_t index;
    std::vector<OrderingKey> keys;  // one per sort key
};

// Every present key under one sort key must be of one kind; a text and a number cannot be ordered.
void requireOneKindPerSortKey(const std::vector<Decorated>& decorated,
                              const std::vector<SortDescriptor>& descriptors) {
    for (std::size_t d = 0; d < descriptors.size(); ++d) {
        std::size_t kind = 0;
        for (const Decorated& item : decorated) {
            std::size_t here = item.keys[d].index();
            if (here == 0) continue;
            if (kind != 0 && here != kind) {
                throw InvalidArgumentException("cannot sort by \"" + descriptors[d].key.toUtf8() +
                                               "\" values of different kinds");
            }
            kind = here;
        }
    }
}

}  // namespace

int SortDescriptor::compareObjects(const Value& a, const Value& b) const {
    OrderingKey left = orderingKey(*this, a);
    OrderingKey right = orderingKey(*this, b);
    if (left.index() != 0 && right.index() != 0 && left.index() != right.index()) {
        throw InvalidArgumentException("cannot compare by \"" + key.toUtf8() +
                                       "\" values of different kinds");
    }
    return directed(*this, compareKeys(left, right));
}

void sortIndexesUsingDescriptors(std::vector<std::size_t>& indexes, const ValueArray& elements,
                                 const std::vector<SortDescriptor>& descriptors) {
    if (descriptors.empty() || indexes.size() < 2) return;
    std::vector<Decorated> decorated;
    decorated.reserve(indexes.size());
    for (std::size_t index : indexes) {
        Decorated item{index, {}};
        item.keys.reserve(descriptors.size());
        for (const SortDescriptor& descriptor : descriptors) {
            item.keys.push_back(orderingKey(descriptor, elements.at(index)));
        }
        decorated.push_back(std::move(item));
    }
    requireOneKindPerSortKey(decorated, descriptors);
    std::stable_sort(decorated.begin(), decorated.end(),
                     [&descriptors](const Decorated& a, const Decorated& b) {
                         for (std::size_t d = 0; d < descriptors.size(); ++d) {
                             int order = directed(descriptors[d], compareKeys(a.keys[d], b.keys[d]));
                             if (order != 0) return order < 0;
                         }
                         return false;
                     });
    for (std::size_t i = 0; i < indexes.size(); ++i)
        indexes[i] = decorated[i].index;
}

ValueArray sortedArrayUsingDescriptors(const ValueArray& elements,
                                       const std::vector<SortDescriptor>& descriptors) {
    std::vector<std::size_t> indexes(elements.size());
    std::iota(indexes.begin(), indexes.end(), std::size_t{0});
    sortIndexesUsingDescriptors(indexes, elements, descriptors);
    ValueArray sorted;
    sorted.reserve(elements.size());
    for (std::size_t index : indexes)
        sorted.push_back(elements[index]);
    return sorted;
}

}  // namespace bv
