// The script controller: finding scripts in the main bundle, replacing tokens, running and logging.
#include "BrevantCocoaExtensions/interface/BVAppleScriptController.hpp"

#include "BrevantCocoaExtensions/platform/Bundle.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"
#include "BrevantCocoaExtensions/text/BVNSString.hpp"

namespace bv {

namespace {

// The main bundle's NAME.scpt, else NAME.applescript; null when neither exists.
std::optional<Text> scriptResource(const Text& name) {
    const auto bundle = Bundle::mainBundle();
    for (const char* extension : {"scpt", "applescript"})
        if (const auto path = bundle->pathForResource(name, Text(extension))) return Text(*path);
    return std::nullopt;
}

// Runs the script; logs the error's description and answers null on failure.
std::optional<Value> runLogged(Script& script) {
    Error error;
    std::optional<Value> result = script.executeAndReturnError(&error);
    if (!result) log(error.localizedDescription.toUtf8());
    return result;
}

Text textOf(const Value& value) {
    return value.text() != nullptr ? *value.text() : value.description();
}

// Every literal occurrence of the key replaced by the replacement, left to right, without looking into
// the replacements themselves.
Text replacingOccurrences(const Text& text, const Text& key, const Text& replacement) {
    const std::u16string_view units = text.view();
    Text out;
    std::size_t at = 0;
    for (std::size_t found = units.find(key.view()); found != std::u16string_view::npos;
         found = units.find(key.view(), at)) {
        out += Text(units.substr(at, found - at));
        out += replacement;
        at = found + key.length();
    }
    out += Text(units.substr(at));
    return out;
}

}  // namespace

BVAppleScriptController& BVAppleScriptController::sharedInstance() {
    static BVAppleScriptController controller;
    return controller;
}

std::shared_ptr<Script> BVAppleScriptController::scriptForName(const Text& name) {
    const Text bareName = BVNSString::lastPathComponentWithoutExtension(name);
    const bool remembered = scriptURL_ && BVNSString::lastPathComponentWithoutExtension(*scriptURL_)
                                              .equals(bareName, CompareMode::CaseInsensitive);
    if (!remembered) scriptURL_ = scriptResource(bareName);
    if (!scriptURL_) {
        log("The script " + bareName.toUtf8() + " is not among the application's resources.");
        return nullptr;
    }
    Error error;
    std::shared_ptr<Script> script = Script::initWithContentsOfURL(*scriptURL_, &error);
    if (!script) log(error.localizedDescription.toUtf8());
    return script;
}

std::optional<Text> BVAppleScriptController::sourceForScriptNamed(const Text& name) {
    const std::shared_ptr<Script> script = scriptForName(name);
    if (!script) return std::nullopt;
    return script->source();
}

std::optional<Value> BVAppleScriptController::executeScriptNamed(const Text& name) {
    const std::shared_ptr<Script> script = scriptForName(name);
    if (!script) return std::nullopt;
    return runLogged(*script);
}

std::optional<Value> BVAppleScriptController::executeScriptNamedWithArguments(
    const Text& name, const std::optional<ValueDictionary>& arguments) {
    const std::optional<Text> source = replaceTokensInSourceWithValues(sourceForScriptNamed(name), arguments);
    if (!source) return std::nullopt;
    return runLogged(*Script::initWithSource(*source));
}

std::optional<Text> BVAppleScriptController::replaceTokensInSourceWithValues(
    const std::optional<Text>& source, const std::optional<ValueDictionary>& values) {
    if (!source || source->empty()) return std::nullopt;
    if (!values || values->empty()) return source;
    Text replaced = *source;
    for (const auto& [key, value] : *values)
        if (!key.empty()) replaced = replacingOccurrences(replaced, key, textOf(value));
    return replaced;
}

std::optional<Text> BVAppleScriptController::replaceTokensWithValuesForScriptNamedAndExecute(
    const std::optional<ValueDictionary>& values, const Text& name, bool execute) {
    const std::optional<Text> replaced = replaceTokensInSourceWithValues(sourceForScriptNamed(name), values);
    if (execute && !executeScriptNamed(name)) return std::nullopt;
    return replaced;
}

}  // namespace bv
