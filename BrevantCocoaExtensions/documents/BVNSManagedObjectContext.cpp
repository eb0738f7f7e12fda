// BVNSManagedObjectContext: contexts from the main bundle's model files, with or without a store.
#include "BrevantCocoaExtensions/documents/BVNSManagedObjectContext.hpp"

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "BrevantCocoaExtensions/platform/Bundle.hpp"
#include "BrevantCocoaExtensions/platform/ErrorPresentation.hpp"
#include "BrevantCocoaExtensions/platform/Exceptions.hpp"
#include "BrevantCocoaExtensions/platform/Log.hpp"

namespace bv::BVNSManagedObjectContext {

namespace {

std::shared_ptr<ManagedObjectContext> contextOver(std::shared_ptr<const ManagedObjectModel> model) {
    return std::make_shared<ManagedObjectContext>(
        std::make_shared<PersistentStoreCoordinator>(std::move(model)));
}

// The ".mom" files directly in the main bundle's resources, in name order.
std::vector<std::string> modelFilesOfMainBundle() {
    std::vector<std::string> paths;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(Bundle::mainBundle()->resourcePath(), error))
        if (entry.path().extension() == ".mom" && entry.is_regular_file(error))
            paths.push_back(entry.path().string());
    std::sort(paths.begin(), paths.end());
    return paths;
}

std::shared_ptr<const ManagedObjectModel> loggedModelAtPath(const std::string& path) {
    Error error;
    std::shared_ptr<const ManagedObjectModel> model = ManagedObjectModel::modelAtPath(path, &error);
    if (!model) log(error.localizedDescription.toUtf8() + " " + error.failureReason.toUtf8());
    return model;
}

}  // namespace

std::shared_ptr<ManagedObjectContext> contextForAllModels() {
    std::vector<EntityDescription> entities;
    std::map<Text, std::string> definedIn;
    for (const std::string& path : modelFilesOfMainBundle()) {
        Error error;
        std::optional<std::vector<EntityDescription>> read = ManagedObjectModel::entitiesAtPath(path, &error);
        if (!read) {
            log(error.localizedDescription.toUtf8() + " " + error.failureReason.toUtf8());
            return nullptr;
        }
        for (EntityDescription& entity : *read) {
            const auto [earlier, added] = definedIn.emplace(entity.name, path);
            if (!added) {
                log("The object models cannot be merged: the entity \"" + entity.name.toUtf8() +
                    "\" is defined in " + earlier->second + " and in " + path);
                return nullptr;
            }
            entities.push_back(std::move(entity));
        }
    }
    try {
        return contextOver(std::make_shared<const ManagedObjectModel>(std::move(entities)));
    } catch (const InvalidArgumentException& exception) {
        log(std::string("The object models cannot be merged: ") + exception.what());
        return nullptr;
    }
}

std::shared_ptr<ManagedObjectContext> contextForModelAtPath(const Text& path) {
    std::shared_ptr<const ManagedObjectModel> model = loggedModelAtPath(path.toUtf8());
    return model ? contextOver(std::move(model)) : nullptr;
}

std::shared_ptr<ManagedObjectContext> contextForModelNamed(const Text& name) {
    const std::optional<std::string> path = Bundle::mainBundle()->pathForResource(name, Text("mom"));
    return path ? contextForModelAtPath(Text(*path)) : nullptr;
}

std::shared_ptr<ManagedObjectContext> contextForModelNamedLoadDocAtURL(const Text& name, const Text& url) {
    std::shared_ptr<ManagedObjectContext> context = contextForModelNamed(name);
    if (!context) return nullptr;
    Error error;
    if (!context->persistentStoreCoordinator()->addXMLStoreAtURL(url, &error)) {
        log("The object-graph store " + url.toUtf8() +
            " could not be opened: " + error.failureReason.toUtf8());
        presentError(error);
    }
    return context;
}

std::shared_ptr<ManagedObject> createObjectForEntityNamed(ManagedObjectContext& self,
                                                          const Text& entityName) {
    return self.insertNewObjectForEntityForName(entityName);
}

}  // namespace bv::BVNSManagedObjectContext
