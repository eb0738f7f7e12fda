// bv::Script: a script of the library's small script language, Brevant Script (docs/SCRIPTS.md).
//
// A script is a source text, compiled on first run (or on compileAndReturnError) and then run any number
// of times. The language can speak (through bv::Speech), keep texts and numbers in variables, join them
// and answer a value; it has no way at all to start a program, reach a shell, or read or write files, so
// a text placed into a script can only ever be spoken, kept or answered.
//
// Errors come in the domain "BVScriptErrorDomain": code 1 the file cannot be read, 2 the source does not
// compile, 3 the script failed while running. Their description names the line:
// "Brevant Script error on line 2: ...".
#pragma once

#include <memory>
#include <optional>

#include "BrevantCocoaExtensions/platform/Error.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"
#include "BrevantCocoaExtensions/platform/Value.hpp"

namespace bv {

class Script {
  public:
    explicit Script(Text source);
    ~Script();
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    // A script of the source, not yet compiled.
    [[nodiscard]] static std::shared_ptr<Script> initWithSource(const Text& source);
    // A script of the file's text (UTF-8, at most 1 MB); null with *error when it cannot be read.
    [[nodiscard]] static std::shared_ptr<Script> initWithContentsOfURL(const Text& path,
                                                                       Error* error = nullptr);

    // The source as written.
    [[nodiscard]] const Text& source() const noexcept { return source_; }
    [[nodiscard]] bool isCompiled() const noexcept { return program_ != nullptr; }
    // Compiles the source; false with *error when it does not compile.
    bool compileAndReturnError(Error* error = nullptr);
    // Compiles if needed and runs: the value of the "return" that ended the script, the null Value when it
    // ended without one; nullopt with *error when it does not compile or fails while running.
    std::optional<Value> executeAndReturnError(Error* error = nullptr);

  private:
    struct Program;
    Text source_;
    std::unique_ptr<Program> program_;
};

}  // namespace bv
