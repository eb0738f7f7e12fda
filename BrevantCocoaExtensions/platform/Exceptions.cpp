// The assertion handler and the exception that carries its details.
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"

#include "BrevantCocoaExtensions/platform/Log.hpp"

namespace bv {

InternalInconsistencyException::InternalInconsistencyException(std::string operation,
                                                               std::string objectDescription,
                                                               std::string fileStem, int line,
                                                               std::string description)
    : NamedException("NSInternalInconsistencyException", description),
      operation_(std::move(operation)),
      objectDescription_(std::move(objectDescription)),
      fileStem_(std::move(fileStem)),
      line_(line),
      description_(std::move(description)) {}

void assertionFailure(const std::string& operation, const std::string& objectDescription,
                      const std::string& fileStem, int line, const std::string& description) {
    log("*** Assertion failure in " + operation + ", " + fileStem + ":" + std::to_string(line));
    throw InternalInconsistencyException(operation, objectDescription, fileStem, line, description);
}

}  // namespace bv
