// The XML property-list writer (the library's own) and reader (libxml2 into Values).
#include "BrevantCocoaExtensions/platform/PropertyList.hpp"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <charconv>
#include <chrono>
#include <climits>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "BrevantCocoaExtensions/platform/Base64.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/XMLLibxmlSupportInternal.hpp"

namespace bv::PropertyList {

namespace {

constexpr std::string_view kHeader =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
    "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
    "<plist version=\"1.0\">\n";
constexpr std::string_view kFooter = "</plist>\n";

// Seconds since 1970 of 0001-01-01T00:00:00Z and of 9999-12-31T23:59:59Z: the years a <date> can show.
constexpr double kEarliestDate = -62135596800.0;
constexpr double kLatestDate = 253402300799.0;

bool isXmlCharacter(char16_t unit) {
    if (unit < 0x20) return unit == u'\t' || unit == u'\n' || unit == u'\r';
    return unit != 0xFFFE && unit != 0xFFFF;
}

std::string formatDate(const Date& date) {
    namespace chrono = std::chrono;
    double whole = std::floor(date.timeIntervalSince1970());
    if (!(whole >= kEarliestDate && whole <= kLatestDate)) {
        throw InvalidArgumentException("a property-list date must lie in the years 1 to 9999");
    }
    chrono::sys_seconds instant{chrono::seconds(static_cast<std::int64_t>(whole))};
    chrono::sys_days day = chrono::floor<chrono::days>(instant);
    chrono::year_month_day ymd{day};
    chrono::hh_mm_ss time{instant - day};
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%04d-%02u-%02uT%02d:%02d:%02dZ", static_cast<int>(ymd.year()),
                  static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()),
                  static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
                  static_cast<int>(time.seconds().count()));
    return buffer;
}

template <class Floating>
std::string shortestForm(Floating value) {
    char buffer[64];
    auto [end, code] = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, end);
}

std::string formatReal(const Number& number) {
    double value = number.doubleValue();
    if (std::isnan(value)) return "nan";
    if (std::isinf(value)) return value > 0 ? "+infinity" : "-infinity";
    if (number.kind() == Number::Kind::Float) return shortestForm(static_cast<float>(value));
    return shortestForm(value);
}

// Writes one value per line, indented by tabs; the root starts at depth 0.
class Writer {
  public:
    std::string document(const Value& root) {
        out_ = kHeader;
        write(root, 0);
        out_ += kFooter;
        return std::move(out_);
    }
    std::string document(const ValueDictionary& root) {
        out_ = kHeader;
        writeDictionary(root, 0);
        out_ += kFooter;
        return std::move(out_);
    }

  private:
    void write(const Value& value, int depth) {
        if (const auto* dictionary = value.dictionary()) return writeDictionary(*dictionary, depth);
        if (const auto* array = value.array()) return writeArray(*array, depth);
        indent(depth);
        if (const Text* text = value.text()) {
            element("string", escaped(*text));
        } else if (const Number* number = value.number()) {
            writeNumber(*number);
        } else if (const Date* date = value.get<Date>()) {
            element("date", formatDate(*date));
        } else if (const ByteData* data = value.get<ByteData>()) {
            element("data", base64::encode(*data));
        } else {
            throw InvalidArgumentException("a property list cannot hold a value of this kind: " +
                                           value.description().toUtf8());
        }
    }

    void writeNumber(const Number& number) {
        if (number.isBool()) {
            out_ += number.boolValue() ? "<true/>\n" : "<false/>\n";
        } else if (number.isFloating()) {
            element("real", formatReal(number));
        } else if (number.isUnsigned64()) {
            element("integer", std::to_string(number.uint64Value()));
        } else {
            element("integer", std::to_string(number.int64Value()));
        }
    }

    void writeDictionary(const ValueDictionary& dictionary, int depth) {
        indent(depth);
        if (dictionary.empty()) {
            out_ += "<dict/>\n";
            return;
        }
        out_ += "<dict>\n";
        for (const auto& [key, value] : dictionary) {
            indent(depth + 1);
            element("key", escaped(key));
            write(value, depth + 1);
        }
        indent(depth);
        out_ += "</dict>\n";
    }

    void writeArray(const ValueArray& array, int depth) {
        indent(depth);
        if (array.empty()) {
            out_ += "<array/>\n";
            return;
        }
        out_ += "<array>\n";
        for (const Value& value : array)
            write(value, depth + 1);
        indent(depth);
        out_ += "</array>\n";
    }

    void indent(int depth) { out_.append(static_cast<std::size_t>(depth), '\t'); }

    void element(std::string_view name, std::string_view content) {
        out_.append("<").append(name).append(">").append(content).append("</").append(name).append(">\n");
    }

    // The text as UTF-8 character data: &, < and > escaped, carriage returns as references so that
    // reading does not fold them into line feeds.
    static std::string escaped(const Text& text) {
        for (char16_t unit : text.units()) {
            if (!isXmlCharacter(unit)) {
                throw InvalidArgumentException("a property-list text cannot hold the character U+" +
                                               hex(unit));
            }
        }
        std::string utf8 = text.toUtf8();
        std::string out;
        out.reserve(utf8.size());
        for (char c : utf8) {
            switch (c) {
                case '&':
                    out += "&amp;";
                    break;
                case '<':
                    out += "&lt;";
                    break;
                case '>':
                    out += "&gt;";
                    break;
                case '\r':
                    out += "&#13;";
                    break;
                default:
                    out += c;
            }
        }
        return out;
    }

    static std::string hex(char16_t unit) {
        char buffer[8];
        std::snprintf(buffer, sizeof buffer, "%04X", static_cast<unsigned>(unit));
        return buffer;
    }

    std::string out_;
};

ByteData toBytes(const std::string& text) {
    return ByteData(text.begin(), text.end());
}

// --- Reading -------------------------------------------------------------------------------------------

struct ReadFailure {
    std::string reason;
};

[[noreturn]] void fail(const xmlNode* node, const std::string& what) {
    throw ReadFailure{what + " at line " + std::to_string(xmlGetLineNo(node))};
}

bool isBlank(const xmlChar* content) {
    for (const xmlChar* c = content; c != nullptr && *c != 0; ++c) {
        if (*c != ' ' && *c != '\t' && *c != '\n' && *c != '\r') return false;
    }
    return true;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\n\r";
    std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view nameOf(const xmlNode* node) {
    return reinterpret_cast<const char*>(node->name);
}

// The element children of a container; blank text, comments and processing instructions are skipped.
std::vector<const xmlNode*> elementChildren(const xmlNode* container) {
    std::vector<const xmlNode*> children;
    for (const xmlNode* child = container->children; child != nullptr; child = child->next) {
        switch (child->type) {
            case XML_ELEMENT_NODE:
                children.push_back(child);
                break;
            case XML_TEXT_NODE:
            case XML_CDATA_SECTION_NODE:
                if (!isBlank(child->content))
                    fail(child, "unexpected text inside <" + std::string(nameOf(container)) + ">");
                break;
            case XML_ENTITY_REF_NODE:
                fail(child, "unexpected entity inside <" + std::string(nameOf(container)) + ">");
            default:
                break;
        }
    }
    return children;
}

// The character data of a leaf element (entities expanded); an element child is an error.
std::string leafContent(const xmlNode* element) {
    const xmlNode* only = element->children;
    if (only == nullptr) return {};
    if (only->next == nullptr && only->type == XML_TEXT_NODE) {  // the common case: one plain text node
        return reinterpret_cast<const char*>(only->content);
    }
    for (const xmlNode* child = element->children; child != nullptr; child = child->next) {
        if (child->type == XML_ELEMENT_NODE) {
            fail(child, "unexpected element <" + std::string(nameOf(child)) + "> inside <" +
                            std::string(nameOf(element)) + ">");
        }
    }
    xmlChar* content = xmlNodeGetContent(element);
    std::string text = content != nullptr ? reinterpret_cast<const char*>(content) : "";
    xmlFree(content);
    return text;
}

Number readInteger(const xmlNode* element) {
    std::string content(trimmed(leafContent(element)));
    std::string_view digits = content;
    bool negative = false;
    if (!digits.empty() && (digits.front() == '-' || digits.front() == '+')) {
        negative = digits.front() == '-';
        digits.remove_prefix(1);
    }
    int base = 10;
    if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) {
        base = 16;
        digits.remove_prefix(2);
    }
    std::uint64_t magnitude = 0;
    auto [end, code] = std::from_chars(digits.data(), digits.data() + digits.size(), magnitude, base);
    if (digits.empty() || code != std::errc() || end != digits.data() + digits.size()) {
        fail(element, "malformed or out-of-range <integer> \"" + content + "\"");
    }
    constexpr std::uint64_t kSignedLimit = 0x8000000000000000ULL;
    if (negative) {
        if (magnitude > kSignedLimit) fail(element, "out-of-range <integer> \"" + content + "\"");
        return Number::int64(static_cast<std::int64_t>(0 - magnitude));
    }
    if (magnitude >= kSignedLimit) return Number::uint64(magnitude);
    return Number::int64(static_cast<std::int64_t>(magnitude));
}

// A decimal floating number, or "nan", "inf", "infinity" in any case, with an optional sign.
Number readReal(const xmlNode* element) {
    std::string content(trimmed(leafContent(element)));
    std::string_view text = content;
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);  // from_chars reads a "-" but no "+"
        if (!text.empty() && text.front() == '-') text = {};
    }
    double value = 0;
    auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || code != std::errc() || end != text.data() + text.size()) {
        fail(element, "malformed <real> \"" + content + "\"");
    }
    return Number::float64(value);
}

// The number written by `count` digits at `at`, or -1 when one of them is not a digit.
int digitsAt(std::string_view text, std::size_t at, std::size_t count) {
    int value = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        if (text[i] < '0' || text[i] > '9') return -1;
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

// Exactly YYYY-MM-DDTHH:MM:SSZ, in UTC.
Date readDate(const xmlNode* element) {
    namespace chrono = std::chrono;
    std::string content(trimmed(leafContent(element)));
    std::string_view text = content;
    bool shaped = text.size() == 20 && text[4] == '-' && text[7] == '-' && text[10] == 'T' &&
                  text[13] == ':' && text[16] == ':' && text[19] == 'Z';
    int year = shaped ? digitsAt(text, 0, 4) : -1;
    int month = shaped ? digitsAt(text, 5, 2) : -1;
    int day = shaped ? digitsAt(text, 8, 2) : -1;
    int hour = shaped ? digitsAt(text, 11, 2) : -1;
    int minute = shaped ? digitsAt(text, 14, 2) : -1;
    int second = shaped ? digitsAt(text, 17, 2) : -1;
    chrono::year_month_day date{chrono::year(year), chrono::month(static_cast<unsigned>(month)),
                                chrono::day(static_cast<unsigned>(day))};
    if (year < 0 || month < 0 || day < 0 || !date.ok() || hour < 0 || hour > 23 || minute < 0 ||
        minute > 59 || second < 0 || second > 59) {
        fail(element, "malformed <date> \"" + content + "\"");
    }
    auto instant =
        chrono::sys_days(date) + chrono::hours(hour) + chrono::minutes(minute) + chrono::seconds(second);
    return Date::fromTimeIntervalSince1970(static_cast<double>(instant.time_since_epoch().count()));
}

ByteData readData(const xmlNode* element) {
    // Line breaks and indentation may wrap the Base64; any other stray character is an error.
    std::string content = leafContent(element);
    std::erase_if(content, [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; });
    std::optional<ByteData> bytes = base64::decode(std::string_view(content), false);
    if (!bytes) fail(element, "malformed Base64 in <data>");
    return std::move(*bytes);
}

Value readValue(const xmlNode* element);

ValueDictionary readDictionary(const xmlNode* element) {
    ValueDictionary dictionary;
    std::vector<const xmlNode*> children = elementChildren(element);
    for (std::size_t i = 0; i < children.size(); i += 2) {
        if (nameOf(children[i]) != "key") fail(children[i], "expected <key> in <dict>");
        if (i + 1 == children.size()) fail(children[i], "<key> without a value in <dict>");
        Text key = Text::fromUtf8(leafContent(children[i]));
        dictionary.insert_or_assign(std::move(key), readValue(children[i + 1]));
    }
    return dictionary;
}

ValueArray readArray(const xmlNode* element) {
    ValueArray array;
    for (const xmlNode* child : elementChildren(element))
        array.push_back(readValue(child));
    return array;
}

Value readValue(const xmlNode* element) {
    std::string_view name = nameOf(element);
    if (name == "dict") return readDictionary(element);
    if (name == "array") return readArray(element);
    if (name == "string") return Text::fromUtf8(leafContent(element));
    if (name == "integer") return readInteger(element);
    if (name == "real") return readReal(element);
    if (name == "true" || name == "false") {
        if (!elementChildren(element).empty()) fail(element, "<" + std::string(name) + "> must be empty");
        return Number::boolean(name == "true");
    }
    if (name == "date") return readDate(element);
    if (name == "data") return readData(element);
    fail(element, "unknown element <" + std::string(name) + ">");
}

Value readDocument(const xmlDoc* document) {
    const xmlNode* root = xmlDocGetRootElement(document);
    if (root == nullptr) throw ReadFailure{"the document has no root element"};
    if (nameOf(root) != "plist") return readValue(root);
    std::vector<const xmlNode*> children = elementChildren(root);
    if (children.size() != 1) fail(root, "<plist> must hold exactly one value");
    return readValue(children.front());
}

std::string libxmlReason(xmlParserCtxt* context) {
    const xmlError* last = xmlCtxtGetLastError(context);
    if (last == nullptr || last->message == nullptr) return "the data is not well-formed XML";
    std::string message(trimmed(last->message));
    return message + " at line " + std::to_string(last->line);
}

bool reportFailure(Error* error, std::string reason) {
    return Error::report(
        error, Error{"NSCocoaErrorDomain", 3840,
                     Text("The data couldn\u2019t be read because it isn\u2019t in the correct format."),
                     Text(reason)});
}

}  // namespace

ByteData xmlData(const Value& root) {
    return toBytes(Writer().document(root));
}

ByteData xmlData(const ValueDictionary& root) {
    return toBytes(Writer().document(root));
}

bool isValidPropertyList(const Value& root) {
    try {
        (void)Writer().document(root);
        return true;
    } catch (const InvalidArgumentException&) {
        return false;
    }
}

std::optional<Value> fromXmlData(std::string_view bytes, Error* error) {
    if (bytes.size() > static_cast<std::size_t>(INT_MAX)) {
        reportFailure(error, "the data is too large");
        return std::nullopt;
    }
    xmlsupport::EntityGuard guard;  // data has no folder: no external entity is ever loaded
    std::unique_ptr<xmlParserCtxt, decltype(&xmlFreeParserCtxt)> context(xmlNewParserCtxt(),
                                                                         &xmlFreeParserCtxt);
    if (!context) throw std::bad_alloc();
    std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> document(
        xmlCtxtReadMemory(context.get(), bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr,
                          XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING),
        &xmlFreeDoc);
    if (!document) {
        reportFailure(error, libxmlReason(context.get()));
        return std::nullopt;
    }
    try {
        return readDocument(document.get());
    } catch (const ReadFailure& failure) {
        reportFailure(error, failure.reason);
        return std::nullopt;
    }
}

std::optional<Value> fromXmlData(const ByteData& data, Error* error) {
    return fromXmlData(std::string_view(reinterpret_cast<const char*>(data.data()), data.size()), error);
}

DictionaryFile readDictionaryFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return {std::nullopt, true, {}};
    const std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    Error error;
    const auto value = fromXmlData(bytes, &error);
    if (value && value->dictionary()) return {*value->dictionary(), false, {}};
    return {std::nullopt, false,
            error.failureReason.empty() ? std::string() : ": " + error.failureReason.toUtf8()};
}

}  // namespace bv::PropertyList
