// BVNSObject: operations available on every object: help anchors, speech, alerts, exceptions and errors
// with formatted messages, and deep copies.
//
// The receiver can be any object; where an operation needs the receiver's class name (exceptions and
// errors) it is the demangled name of the object's dynamic type, with its namespaces ("bv::CSVReader",
// "QuizWindow"). Messages are formatted with bv::stringWithFormat ("%@" and the printf directives).
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <typeinfo>

#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Format.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv::BVNSObject {

// --- The operations on already formatted messages, which the templates below forward to ---------------

// The demangled name of a type ("bv::CSVReader").
[[nodiscard]] Text classNameOfType(const std::type_info& type);
// Opens the anchor in the application's help book (see showHelpAnchor).
void showHelpAnchorInMainBook(const Text& anchor);
// Runs the script source "say \"MESSAGE\"" built from the message as it stands (quotes not escaped, so a
// message holding a double quote does not compile and is not spoken); every error is ignored.
void sayMessage(const Text& message);
// The modal alert titled "Alert" with the message and the one button "OK".
void showAlertWithMessage(const Text& message);
// Throws a bv::Exception named `name` whose reason is "CLASS: MESSAGE".
[[noreturn]] void raiseExceptionWithNameClassMessage(const std::string& name, const Text& className,
                                                     const Text& message);

// Opens help pages: gets the page's file URL with the anchor ("file:///.../page.html#anchor"); answers
// whether it was opened. The default opens it with the desktop's browser.
using HelpOpener = std::function<bool(const Text& url)>;
// Installs a help opener and answers the previous one; an empty opener restores the desktop's.
HelpOpener setHelpOpener(HelpOpener opener);

// --- The operations ---------------------------------------------------------------------------------

// The class name of the receiver's dynamic type.
template <class Self>
[[nodiscard]] Text className(const Self& self) {
    return classNameOfType(typeid(self));
}

// Opens the anchor in the help book named by the main bundle's "CFBundleHelpBookName": the book is the
// resource folder of that name, and the anchor's page is its first HTML page (in path order) holding an
// element whose id or name is the anchor, else the book's index.html. Logged when the application has no
// help book.
template <class Self>
void showHelpAnchor(const Self& /*self*/, const Text& anchor) {
    showHelpAnchorInMainBook(anchor);
}

// Formats the message and speaks it through a script "say \"MESSAGE\""; errors are ignored.
template <class Self, class... Args>
void say(const Self& /*self*/, const Text& format, const Args&... arguments) {
    sayMessage(stringWithFormat(format, arguments...));
}

// A modal alert titled "Alert" with the formatted message and the single button "OK".
template <class Self, class... Args>
void showAlertWithFormat(const Self& /*self*/, const Text& format, const Args&... arguments) {
    showAlertWithMessage(stringWithFormat(format, arguments...));
}

// Always throws: a bv::Exception with the name and the reason "CLASS: MESSAGE" (the receiver's class name
// and the formatted message).
template <class Self, class... Args>
[[noreturn]] void raiseExceptionWithNameFormat(const Self& self, const std::string& name, const Text& format,
                                               const Args&... arguments) {
    raiseExceptionWithNameClassMessage(name, className(self), stringWithFormat(format, arguments...));
}

// An error whose domain is the receiver's class name, with the code and the formatted message as its
// localized description; returned, not thrown.
template <class Self, class... Args>
[[nodiscard]] Error errorWithCodeFormat(const Self& self, std::int64_t code, const Text& format,
                                        const Args&... arguments) {
    return Error{className(self).toUtf8(), code, stringWithFormat(format, arguments...), {}};
}

// A copy that shares nothing with the receiver, as archiving and unarchiving makes one. Objects held by
// identity have no archived form: a value holding one, at any depth, throws InvalidArgumentException.
[[nodiscard]] Value deepCopy(const Value& self);

}  // namespace bv::BVNSObject
