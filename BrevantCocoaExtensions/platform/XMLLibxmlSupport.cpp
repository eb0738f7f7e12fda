// libxml2 plumbing shared by the tree parser and the streaming parser.
#include "BrevantCocoaExtensions/platform/XMLLibxmlSupport.hpp"

#include <libxml/SAX2.h>
#include <libxml/globals.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>
#include <libxml/xmlerror.h>

#include <cctype>
#include <filesystem>
#include <system_error>

namespace bv::xmlsupport {

namespace {

const char* text(const unsigned char* value) {
    return reinterpret_cast<const char*>(value);
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

std::string currentInputFile(void* ctx) {
    auto* context = static_cast<xmlParserCtxtPtr>(ctx);
    if (context == nullptr || context->input == nullptr || context->input->filename == nullptr) return {};
    return context->input->filename;
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

}  // namespace

void initializeLibxml() {
    static const bool initialized = [] {
        xmlInitParser();
        return true;
    }();
    (void)initialized;
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

void declareEntityFromLocalFilesOnly(void* ctx, const unsigned char* name, int type,
                                     const unsigned char* publicId, const unsigned char* systemId,
                                     unsigned char* content) {
    if (isExternalParsedEntity(type)) {
        std::optional<std::string> path =
            systemId == nullptr ? std::nullopt : localPathOfSystemID(text(systemId), currentInputFile(ctx));
        std::error_code ignored;
        if (!path || !std::filesystem::is_regular_file(*path, ignored)) return declareEmpty(ctx, name, type);
    }
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
