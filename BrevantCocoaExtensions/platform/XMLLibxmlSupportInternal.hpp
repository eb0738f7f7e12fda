// Plumbing shared by the parsers built on libxml2 (the tree parser of XMLDocument, the streaming
// XMLStreamParser and the property-list reader): one-time initialisation, capture of libxml2's error
// reports so that nothing reaches standard error, and the entity guard that confines what a document may
// make the parser read.
//
// Internal to the library: not installed with the public headers.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>

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

// An entity-declaration handler to put in a SAX2 handler in place of xmlSAX2EntityDecl (same signature;
// ctx is the parser context): it declares every external parsed entity as an empty internal one, so that
// nothing is ever loaded and references to it expand to nothing.
void declareEntityWithoutExternalContent(void* ctx, const unsigned char* name, int type,
                                         const unsigned char* publicId, const unsigned char* systemId,
                                         unsigned char* content);

// The limits an entity guard applies.
inline constexpr std::uint64_t kLargestEntityFile = 1024 * 1024;          // an external entity file
inline constexpr std::uint64_t kExpansionPerInputByte = 8;                // entity text per input byte
inline constexpr std::uint64_t kExpansionAllowance = 4ULL * 1024 * 1024;  // plus this much in any case

// The rules of one parse on this thread, from construction to destruction (guards nest):
//   - External entities (general or parameter) load only a regular file in the document's own folder or
//     below it (its real path, so a symbolic link cannot lead out), of at most kLargestEntityFile bytes,
//     in an ASCII-compatible encoding. Never another scheme than file (no network), a parent-folder climb,
//     a device or a FIFO. A document with no folder (given as bytes, or read from a pipe) loads none.
//   - The entity text that references expand to, over the whole parse, stays within
//     kExpansionPerInputByte times the input read so far plus kExpansionAllowance. The size of each
//     reference is known before it is expanded, so an amplification is refused at once.
// A refusal stops the parse; refusal() then holds the reason, to be reported as the parse error.
class EntityGuard {
  public:
    // documentPath: the file the document is read from, or empty when it has no folder.
    explicit EntityGuard(const std::string& documentPath = {});
    ~EntityGuard();
    EntityGuard(const EntityGuard&) = delete;
    EntityGuard& operator=(const EntityGuard&) = delete;

    // Routes the parser context's entity look-ups through the guard, whose budget counts the references
    // made in this context (the document itself); call it once the context exists. ctx: xmlParserCtxt*.
    void watch(void* context);
    // The input read so far has grown to this many bytes (the expansion budget grows with it).
    void setInputSize(std::uint64_t bytes) noexcept { inputSize_ = bytes; }
    // The reason the parse was stopped, or nullopt.
    [[nodiscard]] const std::optional<ParseIssue>& refusal() const noexcept { return refusal_; }

    // Whether the guard of this thread's innermost parse has refused something.
    [[nodiscard]] static bool currentParseRefused() noexcept;

  private:
    friend struct EntityGuardHooks;

    EntityGuard* outer_;
    void* mainContext_ = nullptr;
    std::string documentPath_;
    std::string folder_;  // the real path of the document's folder; empty when it has none
    std::uint64_t inputSize_ = 0;
    std::uint64_t expanded_ = 0;
    std::unordered_map<const void*, std::uint64_t> expandedSizes_;  // per entity declaration
    std::optional<ParseIssue> refusal_;
};

// The local file a system identifier names, resolved against the file of the document that declares it
// (or the working folder); nullopt for any URI with another scheme than file.
[[nodiscard]] std::optional<std::string> localPathOfSystemID(const std::string& systemID,
                                                             const std::string& baseFile);

}  // namespace bv::xmlsupport
