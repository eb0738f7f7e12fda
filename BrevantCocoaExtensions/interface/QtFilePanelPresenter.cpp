// File panels as QFileDialogs.
#include "BrevantCocoaExtensions/interface/QtFilePanelPresenter.hpp"

#include <QApplication>

#include "BrevantCocoaExtensions/interface/QtText.hpp"

namespace bv::QtFilePanelPresenter {

namespace {

// "Files (*.csv *.txt)" for "csv" and "txt".
QString nameFilter(const std::vector<Text>& fileTypes) {
    QStringList patterns;
    for (const Text& type : fileTypes)
        patterns << QStringLiteral("*.") + toQString(type);
    return QStringLiteral("Files (%1)").arg(patterns.join(QLatin1Char(' ')));
}

QFileDialog::FileMode fileModeFor(const FilePanelRequest& request) {
    if (request.kind == FilePanelRequest::Kind::Save) return QFileDialog::AnyFile;
    if (!request.canChooseFiles) return QFileDialog::Directory;
    return request.allowsMultipleSelection ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile;
}

}  // namespace

std::unique_ptr<QFileDialog> dialogForRequest(const FilePanelRequest& request, QWidget* parent) {
    auto dialog = std::make_unique<QFileDialog>(parent);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    if (!request.title.empty()) dialog->setWindowTitle(toQString(request.title));
    dialog->setAcceptMode(request.kind == FilePanelRequest::Kind::Save ? QFileDialog::AcceptSave
                                                                       : QFileDialog::AcceptOpen);
    dialog->setFileMode(fileModeFor(request));
    if (!request.fileTypes.empty() && request.canChooseFiles)
        dialog->setNameFilter(nameFilter(request.fileTypes));
    if (request.directory) dialog->setDirectory(toQString(*request.directory));
    if (request.requiredFileType) dialog->setDefaultSuffix(toQString(*request.requiredFileType));
    if (!request.nameFieldValue.empty()) dialog->selectFile(toQString(request.nameFieldValue));
    return dialog;
}

std::optional<std::vector<Text>> present(const FilePanelRequest& request) {
    const std::unique_ptr<QFileDialog> dialog = dialogForRequest(request, QApplication::activeWindow());
    if (dialog->exec() != QDialog::Accepted) return std::nullopt;
    std::vector<Text> paths;
    for (const QString& path : dialog->selectedFiles())
        paths.push_back(fromQString(path));
    return paths;
}

FilePanelPresenter install() {
    return BVFileManager::setFilePanelPresenter(present);
}

}  // namespace bv::QtFilePanelPresenter
