// libxml2 plumbing shared by the parsers: initialisation, error capture and the entity guard.
#include "BrevantCocoaExtensions/platform/XMLLibxmlSupportInternal.hpp"

#include <fcntl.h>
#include <libxml/SAX2.h>
#include <libxml/entities.h>
#include <libxml/globals.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlIO.h>
#include <libxml/xmlerror.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <limits>
#include <memory>
#include <system_error>
#include <variant>

namespace bv::xmlsupport {

namespace {

std::string_view bytesOf(const xmlChar* value) {
    return value == nullptr ? std::string_view() : std::string_view(reinterpret_cast<const char*>(value));
}

std::string trimmedMessage(const char* message) {
    std::string out = message == nullptr ? std::string() : std::string(message);
    while (!out.empty() && (out.back() == '\n' || out.back() == ' '))
        out.pop_back();
    return out;
}

// The scheme of a URI ("http" in "http://x"), or the empty text for a plain path.
std::string schemeOf(const std::string& uri) {
    std::size_t colon = uri.find(':');
    if (colon == std::string::npos || colon == 0) return {};
    for (std::size_t at = 0; at < colon; ++at) {
        unsigned char c = static_cast<unsigned char>(uri[at]);
        bool allowed =
            std::isalpha(c) != 0 || (at > 0 && (std::isdigit(c) != 0 || c == '+' || c == '-' || c == '.'));
        if (!allowed) return {};
    }
    std::string scheme = uri.substr(0, colon);
    for (char& c : scheme)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return scheme;
}

std::string percentDecoded(const std::string& value) {
    std::string out;
    out.reserve(value.size());
    for (std::size_t at = 0; at < value.size(); ++at) {
        if (value[at] == '%' && at + 2 < value.size() &&
            std::isxdigit(static_cast<unsigned char>(value[at + 1])) &&
            std::isxdigit(static_cast<unsigned char>(value[at + 2]))) {
            out.push_back(static_cast<char>(std::stoi(value.substr(at + 1, 2), nullptr, 16)));
            at += 2;
        } else {
            out.push_back(value[at]);
        }
    }
    return out;
}

bool isExternalParsedEntity(int type) {
    return type == XML_EXTERNAL_GENERAL_PARSED_ENTITY || type == XML_EXTERNAL_PARAMETER_ENTITY;
}

// Declares the entity as an internal one with no content, so that references to it expand to nothing.
void declareEmpty(void* ctx, const unsigned char* name, int type) {
    int internalType =
        type == XML_EXTERNAL_PARAMETER_ENTITY ? XML_INTERNAL_PARAMETER_ENTITY : XML_INTERNAL_GENERAL_ENTITY;
    static xmlChar nothing[] = "";
    xmlSAX2EntityDecl(ctx, name, internalType, nullptr, nullptr, nothing);
}

constexpr std::uint64_t kSaturated = std::numeric_limits<std::uint64_t>::max();
thread_local EntityGuard* tInnermostGuard = nullptr;
xmlExternalEntityLoader gPreviousLoader = nullptr;

// The real path of a file or folder, or the empty text when it does not exist.
std::string realPathOf(const std::string& path) {
    std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.c_str(), nullptr), &std::free);
    return real == nullptr ? std::string() : std::string(real.get());
}

bool isWithinFolder(const std::string& realPath, const std::string& folder) {
    if (folder == "/") return true;
    return realPath.size() > folder.size() && realPath.compare(0, folder.size(), folder) == 0 &&
           realPath[folder.size()] == '/';
}

// The real path of the folder of a document read from a regular file; empty for anything else (a pipe,
// a device, standard input), which has no folder to read entities from.
std::string folderOfDocument(const std::string& documentPath) {
    if (documentPath.empty()) return {};
    struct stat status {};
    if (::stat(documentPath.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
    std::string parent = std::filesystem::path(documentPath).parent_path().string();
    return realPathOf(parent.empty() ? "." : parent);
}

// Reads an open descriptor to its end, or until it has given more than `limit` bytes.
bool readUpTo(int descriptor, std::uint64_t limit, std::string& out) {
    char buffer[64 * 1024];
    while (out.size() <= limit) {
        ssize_t got = ::read(descriptor, buffer, sizeof buffer);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return false;
        if (got == 0) return true;
        out.append(buffer, static_cast<std::size_t>(got));
    }
    return true;
}

std::string megabytes(std::uint64_t bytes) {
    return std::to_string(bytes / (1024 * 1024)) + " MB";
}

}  // namespace

// The libxml2 hooks behind EntityGuard: the process-wide external-entity loader (which defers to the one
// it replaced when no guard is active on the thread) and the entity look-ups of a watched context.
struct EntityGuardHooks {
    using Loaded = std::variant<std::string, std::string>;  // the bytes (index 0) or a refusal (index 1)

    static Loaded refused(const char* url, const std::string& why) {
        return Loaded(
            std::in_place_index<1>,
            "The external entity \"" + std::string(url == nullptr ? "" : url) + "\" was refused: " + why);
    }

    // The bytes of the external entity at the URL, if the guard's rules allow reading it.
    static Loaded read(const EntityGuard& guard, const char* url) {
        if (guard.folder_.empty())
            return refused(url,
                           "a document with no folder (given as bytes or read from a stream) loads none.");
        std::optional<std::string> path =
            url == nullptr ? std::nullopt : localPathOfSystemID(url, guard.documentPath_);
        if (!path) return refused(url, "only files are read, never the network.");
        const std::string real = realPathOf(*path);
        if (real.empty()) return refused(url, "the file " + *path + " does not exist.");
        if (!isWithinFolder(real, guard.folder_))
            return refused(url, "only files in the document's folder or below it are read.");
        int descriptor = ::open(real.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
        if (descriptor < 0) return refused(url, std::string(std::strerror(errno)) + ".");
        std::unique_ptr<int, void (*)(int*)> closer(&descriptor, [](int* open) { ::close(*open); });
        struct stat status {};
        if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
            return refused(url, "it is not a regular file.");
        std::string bytes;
        if (static_cast<std::uint64_t>(status.st_size) > kLargestEntityFile ||
            !readUpTo(descriptor, kLargestEntityFile, bytes) || bytes.size() > kLargestEntityFile) {
            return refused(url, "it is larger than " + megabytes(kLargestEntityFile) + ".");
        }
        // Its references are counted before it is parsed, which needs an ASCII-compatible encoding.
        if (bytes.find('\0') != std::string::npos)
            return refused(url, "it is not text in UTF-8 or another ASCII-compatible encoding.");
        return Loaded(std::in_place_index<0>, std::move(bytes));
    }

    static void refuse(EntityGuard& guard, void* context, const std::string& message) {
        if (!guard.refusal_) {
            auto* at = static_cast<xmlParserCtxtPtr>(context);
            int line = at != nullptr && at->input != nullptr ? at->input->line : 0;
            int column = at != nullptr && at->input != nullptr ? at->input->col : 0;
            guard.refusal_ = ParseIssue{XML_IO_LOAD_ERROR, line, column, true, message};
        }
        if (guard.mainContext_ != nullptr) xmlStopParser(static_cast<xmlParserCtxtPtr>(guard.mainContext_));
    }

    static xmlParserInputPtr load(const char* url, const char* id, xmlParserCtxtPtr context) {
        EntityGuard* guard = tInnermostGuard;
        if (guard == nullptr) return gPreviousLoader(url, id, context);
        Loaded loaded = read(*guard, url);
        if (loaded.index() == 1) {
            refuse(*guard, guard->mainContext_ != nullptr ? guard->mainContext_ : context,
                   std::get<1>(loaded));
            return nullptr;
        }
        const std::string& bytes = std::get<0>(loaded);
        xmlParserInputBufferPtr buffer = xmlParserInputBufferCreateMem(
            bytes.data(), static_cast<int>(bytes.size()), XML_CHAR_ENCODING_NONE);
        if (buffer == nullptr) return nullptr;
        xmlParserInputPtr input = xmlNewIOInputStream(context, buffer, XML_CHAR_ENCODING_NONE);
        if (input == nullptr) {
            xmlFreeParserInputBuffer(buffer);
            return nullptr;
        }
        input->filename = reinterpret_cast<const char*>(xmlStrdup(BAD_CAST url));
        return input;
    }

    // The text an entity expands to, in bytes: its replacement text with each reference in it replaced by
    // the size of what that reference expands to. Computed once per entity; saturates at kSaturated.
    static std::uint64_t expandedSize(EntityGuard& guard, xmlDocPtr document, xmlEntityPtr entity,
                                      int depth) {
        if (entity->etype == XML_INTERNAL_PREDEFINED_ENTITY) return 1;
        auto known = guard.expandedSizes_.find(entity);
        if (known != guard.expandedSizes_.end()) return known->second;
        constexpr int kDeepestNesting = 40;  // libxml2 refuses deeper nesting itself
        if (depth > kDeepestNesting) return kSaturated;
        guard.expandedSizes_[entity] = 0;  // a reference loop counts nothing (libxml2 reports the loop)
        std::string external;
        std::string_view text;
        if (entity->etype == XML_INTERNAL_GENERAL_ENTITY) {
            text = bytesOf(entity->content);
        } else if (entity->etype == XML_EXTERNAL_GENERAL_PARSED_ENTITY) {
            Loaded loaded = read(guard, reinterpret_cast<const char*>(entity->URI));
            if (loaded.index() == 0) external = std::move(std::get<0>(loaded));
            text = external;  // a refused file counts nothing: loading it fails anyway
        }
        std::uint64_t size = 0;
        std::size_t copied = 0;
        for (std::size_t amp = text.find('&'); amp != std::string_view::npos; amp = text.find('&', amp + 1)) {
            std::size_t semicolon = text.find(';', amp);
            if (semicolon == std::string_view::npos) break;
            if (text[amp + 1] == '#') continue;  // a character reference stands for itself (or less)
            std::string name(text.substr(amp + 1, semicolon - amp - 1));
            xmlEntityPtr inner = xmlGetDocEntity(document, BAD_CAST name.c_str());
            if (inner == nullptr) continue;
            size = saturatingSum(size, amp - copied);
            size = saturatingSum(size, expandedSize(guard, document, inner, depth + 1));
            copied = semicolon + 1;
        }
        size = saturatingSum(size, text.size() - copied);
        guard.expandedSizes_[entity] = size;
        return size;
    }

    static std::uint64_t saturatingSum(std::uint64_t a, std::uint64_t b) {
        return a > kSaturated - b ? kSaturated : a + b;
    }

    // Counts `bytes` more of expanded entity text; refuses and answers false past the budget.
    static bool spend(EntityGuard& guard, void* context, std::uint64_t bytes) {
        const std::uint64_t budget = saturatingSum(
            kExpansionAllowance,
            std::min(guard.inputSize_, kSaturated / kExpansionPerInputByte) * kExpansionPerInputByte);
        guard.expanded_ = saturatingSum(guard.expanded_, bytes);
        if (guard.expanded_ <= budget) return true;
        refuse(guard, context,
               "The entities would expand to more than " + std::to_string(budget) + " bytes (" +
                   std::to_string(kExpansionPerInputByte) + " times the document's size plus " +
                   megabytes(kExpansionAllowance) + "); the document was refused.");
        return false;
    }

    static xmlEntityPtr getEntity(void* context, const xmlChar* name) {
        xmlEntityPtr entity = xmlSAX2GetEntity(context, name);
        EntityGuard* guard = tInnermostGuard;
        // References inside an entity being expanded run in a child context: their text is already part
        // of the expanded size of the reference made in the document.
        if (guard == nullptr || entity == nullptr || context != guard->mainContext_) return entity;
        if (guard->refusal_) return nullptr;
        auto* parser = static_cast<xmlParserCtxtPtr>(context);
        if (parser->inSubset != 0)
            return entity;  // a look-up of the DTD itself, not a reference in the content
        return spend(*guard, context, expandedSize(*guard, parser->myDoc, entity, 0)) ? entity : nullptr;
    }

    static xmlEntityPtr getParameterEntity(void* context, const xmlChar* name) {
        xmlEntityPtr entity = xmlSAX2GetParameterEntity(context, name);
        EntityGuard* guard = tInnermostGuard;
        if (guard == nullptr || entity == nullptr) return entity;
        if (guard->refusal_) return nullptr;
        // libxml2 looks a new internal entity up once, right after declaring it, to keep its raw value.
        if (entity->etype == XML_INTERNAL_PARAMETER_ENTITY && entity->orig == nullptr) return entity;
        std::uint64_t size = static_cast<std::uint64_t>(std::max(entity->length, 0));
        if (entity->etype == XML_EXTERNAL_PARAMETER_ENTITY) {
            Loaded loaded = read(*guard, reinterpret_cast<const char*>(entity->URI));
            size = loaded.index() == 0 ? std::get<0>(loaded).size() : 0;  // a refused file fails to load
        }
        return spend(*guard, context, size) ? entity : nullptr;
    }
};

void initializeLibxml() {
    static const bool initialized = [] {
        xmlInitParser();
        gPreviousLoader = xmlGetExternalEntityLoader();
        xmlSetExternalEntityLoader(&EntityGuardHooks::load);
        return true;
    }();
    (void)initialized;
}

EntityGuard::EntityGuard(const std::string& documentPath)
    : outer_(tInnermostGuard), documentPath_(documentPath), folder_(folderOfDocument(documentPath)) {
    initializeLibxml();
    tInnermostGuard = this;
}

EntityGuard::~EntityGuard() {
    tInnermostGuard = outer_;
}

void EntityGuard::watch(void* context) {
    auto* parser = static_cast<xmlParserCtxtPtr>(context);
    if (parser == nullptr) return;
    mainContext_ = parser;
    parser->sax->getEntity = &EntityGuardHooks::getEntity;
    parser->sax->getParameterEntity = &EntityGuardHooks::getParameterEntity;
}

bool EntityGuard::currentParseRefused() noexcept {
    return tInnermostGuard != nullptr && tInnermostGuard->refusal_.has_value();
}

ErrorCapture::ErrorCapture()
    : previousHandler_(xmlStructuredError), previousContext_(xmlStructuredErrorContext) {
    xmlSetStructuredErrorFunc(this, &ErrorCapture::record);
}

ErrorCapture::~ErrorCapture() {
    xmlSetStructuredErrorFunc(previousContext_, previousHandler_);
}

void ErrorCapture::record(void* self, _xmlError* error) {
    auto* capture = static_cast<ErrorCapture*>(self);
    if (error == nullptr || error->level < XML_ERR_ERROR) return;
    ParseIssue issue{error->code, error->line, error->int2, error->level == XML_ERR_FATAL,
                     trimmedMessage(error->message)};
    if (!capture->firstError_) capture->firstError_ = issue;
    if (issue.fatal && !capture->firstFatal_) capture->firstFatal_ = std::move(issue);
}

Error parseError(const std::optional<ParseIssue>& issue, const std::string& fallbackReason) {
    Error error;
    error.domain = "BVXMLErrorDomain";
    error.localizedDescription = Text("The XML data could not be parsed.");
    if (issue) {
        error.code = issue->code;
        error.failureReason = Text("Line " + std::to_string(issue->line) + ", column " +
                                   std::to_string(issue->column) + ": " + issue->message);
    } else {
        error.code = XML_ERR_DOCUMENT_EMPTY;
        error.failureReason = Text(fallbackReason);
    }
    return error;
}

void declareEntityWithoutExternalContent(void* ctx, const unsigned char* name, int type,
                                         const unsigned char* publicId, const unsigned char* systemId,
                                         unsigned char* content) {
    if (isExternalParsedEntity(type)) return declareEmpty(ctx, name, type);
    xmlSAX2EntityDecl(ctx, name, type, publicId, systemId, content);
}

std::optional<std::string> localPathOfSystemID(const std::string& systemID, const std::string& baseFile) {
    std::string scheme = schemeOf(systemID);
    std::string path;
    if (scheme == "file") {
        path = systemID.substr(5);
        if (path.rfind("//", 0) == 0) {  // an authority: only the local host is local
            std::size_t slash = path.find('/', 2);
            std::string host = path.substr(2, slash == std::string::npos ? std::string::npos : slash - 2);
            if (!host.empty() && host != "localhost") return std::nullopt;
            path = slash == std::string::npos ? std::string("/") : path.substr(slash);
        }
        path = percentDecoded(path);
    } else if (scheme.empty()) {
        path = systemID;
    } else {
        return std::nullopt;
    }
    std::filesystem::path resolved(path);
    if (resolved.is_relative() && !baseFile.empty()) {
        std::string base = baseFile;
        std::string baseScheme = schemeOf(base);
        if (baseScheme == "file") {
            std::optional<std::string> basePath = localPathOfSystemID(base, {});
            if (!basePath) return std::nullopt;
            base = *basePath;
        } else if (!baseScheme.empty()) {
            return std::nullopt;  // relative to a remote document
        }
        resolved = std::filesystem::path(base).parent_path() / resolved;
    }
    return resolved.string();
}

}  // namespace bv::xmlsupport
