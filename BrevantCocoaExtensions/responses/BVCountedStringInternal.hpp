// The hook between a counted-string entry and the collection that indexes it. Internal to the library:
// not installed.
#pragma once

#include "BrevantCocoaExtensions/responses/BVCountedString.hpp"

namespace bv {

// Told around a change of an entry's text, so that the collection holding the entry can re-index it.
class BVCountedString::Indexer {
  public:
    virtual void entryTextWillChange(BVCountedString& entry) = 0;
    virtual void entryTextDidChange(BVCountedString& entry) = 0;

  protected:
    ~Indexer() = default;
};

}  // namespace bv
