// BVCountedString: an answer text with its count and caller data.
#include "BrevantCocoaExtensions/responses/BVCountedString.hpp"

#include "BrevantCocoaExtensions/responses/BVCountedStringInternal.hpp"

#include <string>

namespace bv {

BVCountedString::BVCountedString(Text string, Value userInfo)
    : string_(std::move(string)), userInfo_(std::move(userInfo)) {}

std::shared_ptr<BVCountedString> BVCountedString::initWithStringUserInfo(Text string, Value userInfo) {
    return std::make_shared<BVCountedString>(std::move(string), std::move(userInfo));
}

std::uint64_t BVCountedString::incrementCount() {
    return ++count_;
}

std::uint64_t BVCountedString::decrementCount() {
    if (count_ > 0) --count_;
    return count_;
}

int BVCountedString::sortByCountAscending(const BVCountedString& other) const {
    if (count_ > other.count_) return -1;
    if (count_ < other.count_) return 1;
    return 0;
}

int BVCountedString::sortByCountDescending(const BVCountedString& other) const {
    return -sortByCountAscending(other);
}

void BVCountedString::setString(const Text& string) {
    std::shared_ptr<Indexer> indexer = indexer_.lock();
    if (!indexer) {
        string_ = string;
        return;
    }
    indexer->entryTextWillChange(*this);
    string_ = string;
    indexer->entryTextDidChange(*this);
}

Text BVCountedString::description() const {
    return string_ + Text(" (" + std::to_string(count_) + ")");
}

std::optional<Value> BVCountedString::valueForKey(const Text& key) const {
    if (key == Text("string")) return Value(string_);
    if (key == Text("userInfo")) return userInfo_;
    if (key == Text("count")) return Value(Number::uint64(count_));
    return std::nullopt;
}

void BVCountedString::setValueForKey(const Value& value, const Text& key) {
    if (key == Text("string") && value.text() != nullptr) {
        setString(*value.text());
    } else if (key == Text("count") && value.number() != nullptr) {
        setCount(value.number()->uint64Value());
    } else {
        Object::setValueForKey(value, key);
    }
}

}  // namespace bv
