// Loading a local file into a QTextBrowser.
#include "BrevantCocoaExtensions/interface/BVWebView.hpp"

#include <QUrl>
#include <filesystem>

#include "BrevantCocoaExtensions/interface/QtText.hpp"

namespace bv::BVWebView {

void loadWebViewWithContentsOfFile(QTextBrowser& self, const Text& path) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path.toUtf8(), error);
    const std::string file = error ? path.toUtf8() : absolute.string();
    self.setSource(QUrl::fromLocalFile(QString::fromStdString(file)));
}

}  // namespace bv::BVWebView
