// Sheets on Qt: a window-modal dialog whose finished signal calls the block through a one-shot connection.
#include "BrevantCocoaExtensions/interface/BVNSApplicationSheets.hpp"

#include <utility>

namespace bv::BVNSApplication {

void beginSheetModalForWindowDidEndBlock(QDialog& sheet, QWidget& window, std::function<void(int)> block) {
    if (sheet.parentWidget() != &window) sheet.setParent(&window, sheet.windowFlags());
    sheet.setWindowModality(Qt::WindowModal);
    QObject::connect(
        &sheet, &QDialog::finished, &sheet,
        [block = std::move(block)](int result) {
            if (block) block(result);
        },
        Qt::SingleShotConnection);
    sheet.open();
}

}  // namespace bv::BVNSApplication
