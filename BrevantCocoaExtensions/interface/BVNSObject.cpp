// BVNSObject: class names, help anchors, speech through a script, alerts, exceptions and deep copies.
#include "BrevantCocoaExtensions/interface/BVNSObject.hpp"

#include <cxxabi.h>

#include <QDesktopServices>
#include <QUrl>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

#include "BrevantCocoaExtensions/interface/QtText.hpp"
#include "BrevantCocoaExtensions/interface/Script.hpp"
#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"
#include "BrevantCocoaExtensions/platform/Bundle.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"

namespace bv::BVNSObject {

namespace {

namespace fs = std::filesystem;

HelpOpener& currentHelpOpener() {
    static HelpOpener opener;
    return opener;
}

bool openWithDesktop(const Text& url) {
    return QDesktopServices::openUrl(QUrl(toQString(url)));
}

bool isHtmlPage(const fs::path& path) {
    const std::string extension = path.extension().string();
    return extension == ".html" || extension == ".htm";
}

// Whether the page has an element whose id or name is the anchor.
bool pageHoldsAnchor(const fs::path& page, const std::string& anchor) {
    std::ifstream in(page, std::ios::binary);
    const std::string html{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    for (const char* attribute : {"id=", "name="})
        for (const char quote : {'"', '\''})
            if (html.find(attribute + (quote + anchor) + quote) != std::string::npos) return true;
    return false;
}

// The book's first page, in path order, that holds the anchor; the book's index.html when none does.
fs::path pageForAnchor(const fs::path& book, const std::string& anchor) {
    std::vector<fs::path> pages;
    std::error_code ignored;
    for (fs::recursive_directory_iterator it(book, ignored), end; it != end; it.increment(ignored))
        if (it->is_regular_file(ignored) && isHtmlPage(it->path())) pages.push_back(it->path());
    std::sort(pages.begin(), pages.end());
    for (const fs::path& page : pages)
        if (pageHoldsAnchor(page, anchor)) return page;
    return book / "index.html";
}

// A URL fragment: the anchor with every byte outside the unreserved set percent-encoded.
std::string fragment(const std::string& anchor) {
    return QUrl::toPercentEncoding(QString::fromStdString(anchor)).toStdString();
}

// Throws when the value holds an object, at any depth.
void checkArchivable(const Value& value) {
    if (const auto* array = value.array()) {
        for (const Value& element : *array)
            checkArchivable(element);
    } else if (const auto* dictionary = value.dictionary()) {
        for (const auto& [key, element] : *dictionary)
            checkArchivable(element);
    } else if (value.object()) {
        throw InvalidArgumentException("deepCopy: the object " + value.description().toUtf8() +
                                       " has no archived form");
    }
}

}  // namespace

Text classNameOfType(const std::type_info& type) {
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> demangled(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, &status), std::free);
    return Text(status == 0 && demangled ? demangled.get() : type.name());
}

void showHelpAnchorInMainBook(const Text& anchor) {
    const auto bundle = Bundle::mainBundle();
    const ValueDictionary info = bundle->infoDictionary();
    const auto book = info.find(Text("CFBundleHelpBookName"));
    if (book == info.end() || book->second.text() == nullptr || book->second.text()->empty()) {
        log("showHelpAnchor: the application names no help book (CFBundleHelpBookName)");
        return;
    }
    const fs::path folder = fs::path(bundle->resourcePath()) / book->second.text()->toUtf8();
    const std::string page = pageForAnchor(folder, anchor.toUtf8()).string();
    const Text url("file://" + QUrl::toPercentEncoding(QString::fromStdString(page), "/").toStdString() +
                   "#" + fragment(anchor.toUtf8()));
    const HelpOpener opener = currentHelpOpener();
    if (!(opener ? opener(url) : openWithDesktop(url))) log("showHelpAnchor: cannot open " + url.toUtf8());
}

HelpOpener setHelpOpener(HelpOpener opener) {
    return std::exchange(currentHelpOpener(), std::move(opener));
}

void sayMessage(const Text& message) {
    Script script(Text("say \"") + message + Text("\""));
    (void)script.executeAndReturnError();
}

void showAlertWithMessage(const Text& message) {
    AlertCenter::show(Alert{AlertStyle::Warning, Text("Alert"), message, {Text("OK")}});
}

void raiseExceptionWithNameClassMessage(const std::string& name, const Text& className, const Text& message) {
    throw NamedException<std::runtime_error>(name, className.toUtf8() + ": " + message.toUtf8());
}

Value deepCopy(const Value& self) {
    checkArchivable(self);
    return self;  // values hold their content: the copy shares nothing with the receiver
}

}  // namespace bv::BVNSObject
