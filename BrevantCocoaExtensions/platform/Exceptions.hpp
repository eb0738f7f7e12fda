// The library's exceptions. Each carries a name (as the platform's exceptions do) and a reason.
//
// RangeException is also a std::out_of_range, so callers that only know the standard library can catch
// it; the others are std::runtime_errors. InternalInconsistencyException is what the assertion handler
// raises; it carries the operation, the object's description, the source file stem, the line and the
// description of the failed check.
#pragma once

#include <stdexcept>
#include <string>

namespace bv {

// Base of every exception the library throws: a name (as the platform's exceptions have) and a reason.
// Each concrete exception is also exactly one standard exception (std::out_of_range for a range error,
// std::runtime_error otherwise), so `catch (const std::exception&)` catches them all unambiguously.
class Exception {
  public:
    explicit Exception(std::string name) : name_(std::move(name)) {}
    virtual ~Exception() = default;
    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    [[nodiscard]] virtual const char* what() const noexcept = 0;
    [[nodiscard]] std::string reason() const { return what(); }

  private:
    std::string name_;
};

// The base of the exceptions below: a standard exception of the given kind (caught as such) that is also a
// bv::Exception with a name. what() is the reason.
template <class StandardBase>
class NamedException : public StandardBase, public Exception {
  public:
    NamedException(std::string name, const std::string& reason)
        : StandardBase(reason), Exception(std::move(name)) {}
    [[nodiscard]] const char* what() const noexcept override { return StandardBase::what(); }
};

// An index or range outside the bounds of a text, list or buffer.
class RangeException : public NamedException<std::out_of_range> {
  public:
    explicit RangeException(const std::string& reason) : NamedException("NSRangeException", reason) {}
};

// An argument the operation cannot work with.
class InvalidArgumentException : public NamedException<std::runtime_error> {
  public:
    explicit InvalidArgumentException(const std::string& reason)
        : NamedException("NSInvalidArgumentException", reason) {}
};

// A value kind asked for a conversion it does not have.
class UnrecognizedOperationException : public NamedException<std::runtime_error> {
  public:
    explicit UnrecognizedOperationException(const std::string& reason)
        : NamedException("NSInvalidArgumentException", "unrecognized selector sent to instance: " + reason) {}
};

// Raised by the assertion handler when an argument check fails.
class InternalInconsistencyException : public NamedException<std::runtime_error> {
  public:
    explicit InternalInconsistencyException(const std::string& reason)
        : NamedException("NSInternalInconsistencyException", reason) {}
    InternalInconsistencyException(std::string operation, std::string objectDescription, std::string fileStem,
                                   int line, std::string description);

    [[nodiscard]] const std::string& operation() const noexcept { return operation_; }
    [[nodiscard]] const std::string& objectDescription() const noexcept { return objectDescription_; }
    [[nodiscard]] const std::string& fileStem() const noexcept { return fileStem_; }
    [[nodiscard]] int line() const noexcept { return line_; }
    [[nodiscard]] const std::string& description() const noexcept { return description_; }

  private:
    std::string operation_;
    std::string objectDescription_;
    std::string fileStem_;
    int line_ = 0;
    std::string description_;
};

// The assertion handler: logs the failure and throws InternalInconsistencyException.
[[noreturn]] void assertionFailure(const std::string& operation, const std::string& objectDescription,
                                   const std::string& fileStem, int line, const std::string& description);

}  // namespace bv
