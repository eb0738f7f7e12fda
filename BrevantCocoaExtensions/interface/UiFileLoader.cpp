// Qt Designer .ui files as the bundles' interface files.
#include "BrevantCocoaExtensions/interface/UiFileLoader.hpp"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUiLoader>
#include <QWidget>

#include "BrevantCocoaExtensions/interface/QtObjectHandle.hpp"

namespace bv::UiFileLoader {

namespace {
// The owner's widget, when the owner holds one.
QWidget* ownerWidget(const std::shared_ptr<Object>& owner) {
    const auto handle = std::dynamic_pointer_cast<QtObjectHandle>(owner);
    return handle ? qobject_cast<QWidget*>(handle->object()) : nullptr;
}
}  // namespace

std::optional<ValueArray> load(const std::string& path, const std::shared_ptr<Object>& owner) {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return std::nullopt;  // widgets need one
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    QUiLoader loader;
    loader.setWorkingDirectory(
        QFileInfo(file).absoluteDir());  // images named in the file are found beside it
    QWidget* parent = ownerWidget(owner);
    QWidget* form = loader.load(&file, parent);
    if (!form) return std::nullopt;
    return ValueArray{
        Value(std::make_shared<QtObjectHandle>(form, QtObjectHandle::Ownership::OwnedWhileParentless))};
}

BVNSBundle::InterfaceFileLoader install() {
    return BVNSBundle::setInterfaceFileLoader(load);
}

namespace {
// Linking the interface library is enough for the bundles to read .ui files.
[[maybe_unused]] const bool installedWhenLoaded = (install(), true);
}  // namespace

}  // namespace bv::UiFileLoader
