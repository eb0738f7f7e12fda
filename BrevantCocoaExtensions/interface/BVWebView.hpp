// BVWebView: loading a local file into the suite's web view, a QTextBrowser (it shows HTML and follows
// local links; it never goes to the network).
#pragma once

#include <QTextBrowser>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::BVWebView {

// Shows the file at the path (made absolute), through its file: address: HTML by its extension, else plain
// text, as QTextBrowser reads local files.
void loadWebViewWithContentsOfFile(QTextBrowser& self, const Text& path);

}  // namespace bv::BVWebView
