// bv::QtFilePanelPresenter: shows BVFileManager's open and save panels as QFileDialogs.
//
// The dialog is Qt's own (not the desktop's native one, so it behaves the same everywhere and can be driven
// in tests). Its title is the request's title when there is one; an open panel picks one existing file,
// several, or a folder (when it cannot choose files); a save panel proposes the request's name and adds
// the required extension to a name typed without one. The file types become one name filter ("*.csv").
// The dialog starts in the request's folder.
#pragma once

#include <QFileDialog>
#include <memory>

#include "BrevantCocoaExtensions/files/BVFileManager.hpp"

namespace bv::QtFilePanelPresenter {

// The dialog for a request, ready to run; not shown.
[[nodiscard]] std::unique_ptr<QFileDialog> dialogForRequest(const FilePanelRequest& request,
                                                            QWidget* parent = nullptr);
// Runs the request's dialog modally: the chosen paths, or null when cancelled.
std::optional<std::vector<Text>> present(const FilePanelRequest& request);
// Makes present BVFileManager's panel presenter (needs a QApplication); answers the previous presenter.
FilePanelPresenter install();

}  // namespace bv::QtFilePanelPresenter
