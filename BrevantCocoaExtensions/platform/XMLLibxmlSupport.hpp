// Plumbing shared by the two parsers built on libxml2 (the tree parser of XMLDocument and the streaming
// XMLStreamParser): one-time initialisation, capture of libxml2's error reports so that nothing reaches
// standard error, and the entity-declaration handlers that keep external entities off the network.
//
// Internal to the platform layer; it names no libxml2 type so that it can be installed with the others.
#pragma once

#include <optional>
#include <string>

#include "BrevantCocoaExtensions/platform/Error.hpp"

struct _xmlError;

namespace bv::xmlsupport {

// Initialises libxml2 once per process (safe from any thread).
void initializeLibxml();

// One error reported by libxml2.
struct ParseIssue {
    int code = 0;
    int line = 0;
    int column = 0;
    bool fatal = false;
    std::string message;
};

// While alive, takes every libxml2 error report of this thread and keeps the first error and the first
// fatal error; the handler that was installed before comes back when it goes.
class ErrorCapture {
  public:
    ErrorCapture();
    ~ErrorCapture();
    ErrorCapture(const ErrorCapture&) = delete;
    ErrorCapture& operator=(const ErrorCapture&) = delete;

    // The first fatal error, else the first error, or nullopt when there was none.
    [[nodiscard]] const std::optional<ParseIssue>& mostRelevant() const noexcept {
        return firstFatal_ ? firstFatal_ : firstError_;
    }

  private:
    static void record(void* self, _xmlError* error);

    void (*previousHandler_)(void*, _xmlError*) = nullptr;
    void* previousContext_ = nullptr;
    std::optional<ParseIssue> firstError_;
    std::optional<ParseIssue> firstFatal_;
};

// The error object for a parse that failed: domain "BVXMLErrorDomain", the libxml2 code, and the place and
// message as the failure reason ("Line 3, column 7: Opening and ending tag mismatch: a line 1 and b").
[[nodiscard]] Error parseError(const std::optional<ParseIssue>& issue, const std::string& fallbackReason);

// Entity-declaration handlers to put in a SAX2 handler in place of xmlSAX2EntityDecl (same signature;
// ctx is the parser context). The first declares every external parsed entity as an empty internal one,
// so nothing is ever loaded. The second does so only for entities that are not regular local files, so
// local files are still read and nothing is fetched from the network.
void declareEntityWithoutExternalContent(void* ctx, const unsigned char* name, int type,
                                         const unsigned char* publicId, const unsigned char* systemId,
                                         unsigned char* content);
void declareEntityFromLocalFilesOnly(void* ctx, const unsigned char* name, int type,
                                     const unsigned char* publicId, const unsigned char* systemId,
                                     unsigned char* content);

// The local file a system identifier names, resolved against the file of the document that declares it
// (or the working folder); nullopt for any URI with another scheme than file.
[[nodiscard]] std::optional<std::string> localPathOfSystemID(const std::string& systemID,
                                                             const std::string& baseFile);

}  // namespace bv::xmlsupport
