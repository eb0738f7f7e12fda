// BNSOpenPanel: open panels for a CSV file and an image file that start where the user last chose one.
//
// Each picker remembers the full path of the file chosen under its user-defaults key (bv::UserDefaults)
// and opens next time in that file's folder (the home folder when nothing is remembered). The panel goes
// through BVFileManager's panel presenter (QtFilePanelPresenter::install shows it with QFileDialog; tests
// install their own). Cancelling answers null and leaves the remembered path alone.
#pragma once

#include <optional>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BNSOpenPanel {

// A "csv" file; remembered under "BVLastOpenedCSVFile". The panel proposes the remembered file's name.
std::optional<Text> pickCSVFileToOpen();
// A "jpg", "tiff", "png" or "gif" file; remembered under "BVLastOpenedImageFile". The panel is given the
// whole remembered path as its proposed file (unlike the CSV picker, on purpose).
std::optional<Text> pickImageFile();

}  // namespace bv::BNSOpenPanel
