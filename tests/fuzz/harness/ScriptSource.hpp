// Fuzz harness: bytes run as a Brevant Script source, and used as a message format.
//
// A script either answers a value or fails with an error that names a line of the source; running the same
// compiled script again gives the same outcome; a token replaced by itself leaves the source as it was.
// Formatting never crashes: a directive without its argument is the only refusal.
#pragma once

#include <algorithm>
#include <string>

#include "BrevantCocoaExtensions/interface/BVAppleScriptController.hpp"
#include "BrevantCocoaExtensions/interface/Script.hpp"
#include "BrevantCocoaExtensions/interface/Speech.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/Format.hpp"
#include "Common.hpp"

namespace bv::fuzz {

// The outcome of one run, as text: "=" and the answer's description, or "!" and the error's.
inline std::string scriptOutcome(Script& script) {
    Error error;
    const auto answer = script.executeAndReturnError(&error);
    return answer ? "=" + answer->description().toUtf8() : "!" + error.localizedDescription.toUtf8();
}

inline void scriptSource(const std::uint8_t* data, std::size_t size) {
    static const bool silent = [] {
        Speech::setSpeaker([](const Text&) { return true; });  // never the sound device
        return true;
    }();
    (void)silent;
    const std::string_view bytes = asChars(data, size);
    const Text source(bytes);
    Script script(source);
    const std::string first = scriptOutcome(script);
    check(first == scriptOutcome(script), "a compiled script runs the same way twice");
    if (first.front() == '!') {
        const std::string prefix = "!Brevant Script error on line ";
        check(first.rfind(prefix, 0) == 0, "an error names its line");
        const auto line = std::stoull(first.substr(prefix.size()));
        const auto lines = static_cast<unsigned long long>(std::count(bytes.begin(), bytes.end(), '\n')) + 1;
        check(line >= 1 && line <= lines, "the line named is a line of the source");
    }
    if (!source.empty()) {
        const Text token = source.substring(0, std::min<std::size_t>(source.length(), 3));
        check(BVAppleScriptController::replaceTokensInSourceWithValues(
                  source, ValueDictionary{{token, Value(token)}}) == source,
              "a token replaced by itself leaves the source as it was");
    }
    try {
        (void)stringWithFormat(source, 42, Text("text"), 2.5);
    } catch (const InvalidArgumentException&) {
        // more directives than the three arguments
    }
}

}  // namespace bv::fuzz
