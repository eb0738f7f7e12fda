// BVAppleScriptController: runs the application's scripts, kept as resources of its main bundle.
//
// A script named NAME is the main bundle's resource NAME.scpt or, when there is none, NAME.applescript,
// written in Brevant Script (docs/SCRIPTS.md; see bv::Script). The one shared controller remembers the
// path of the script it used last and uses it again while the same name (compared ignoring case) is asked
// for. Load, compile and run errors are logged (the error's description alone) and answer null; nothing is
// ever shown to the user.
//
// Token replacement puts values into a script's source as plain text. The language can only speak, keep
// and answer texts, so a value holding quotes, semicolons or "$(...)" either breaks the script (which then
// fails to compile: logged, null) or is spoken or answered as the literal text; it is never run.
#pragma once

#include <memory>
#include <optional>

#include "BrevantCocoaExtensions/interface/Script.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class BVAppleScriptController {
  public:
    // The shared controller, created on first use and kept.
    [[nodiscard]] static BVAppleScriptController& sharedInstance();

    // The script of that name (any folder and extension given are dropped first): the remembered path is
    // used again when its name matches ignoring case; otherwise the main bundle's NAME.scpt or
    // NAME.applescript becomes the remembered path (null when neither exists). A new, uncompiled script on
    // every call; null, with the error logged, when it cannot be loaded.
    [[nodiscard]] std::shared_ptr<Script> scriptForName(const Text& name);
    // The source text of the named script; null when there is no such script.
    [[nodiscard]] std::optional<Text> sourceForScriptNamed(const Text& name);
    // Runs the named script: the value it answers (the null Value when it answers nothing), or null with
    // the error logged.
    std::optional<Value> executeScriptNamed(const Text& name);
    // Runs the named script's source with its tokens replaced, compiled afresh; errors as above.
    std::optional<Value> executeScriptNamedWithArguments(const Text& name,
                                                         const std::optional<ValueDictionary>& arguments);
    // The source with every occurrence of each key replaced by its value (a text as itself, another value
    // by its description), key after key in the dictionary's key order, each over the text as the earlier
    // keys left it: a value that holds a later key is replaced again. Keys are matched literally and
    // case-sensitively, without delimiters. Null for a null or empty source; the source unchanged for no
    // values.
    [[nodiscard]] static std::optional<Text> replaceTokensInSourceWithValues(
        const std::optional<Text>& source, const std::optional<ValueDictionary>& values);
    // The named script's source with its tokens replaced. With execute true, the named script itself, not
    // the replaced text, is run first (kept so on purpose), and a failed run answers null.
    std::optional<Text> replaceTokensWithValuesForScriptNamedAndExecute(
        const std::optional<ValueDictionary>& values, const Text& name, bool execute);

    // The path of the script used last; null at first and after a name that had no script.
    [[nodiscard]] const std::optional<Text>& scriptURL() const noexcept { return scriptURL_; }

  private:
    BVAppleScriptController() = default;
    std::optional<Text> scriptURL_;
};

}  // namespace bv
