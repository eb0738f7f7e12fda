// The gallery's pages beyond the first: each page is a function in its own file that builds the page's
// widget, listed once in pages().
#pragma once

#include <QString>
#include <QWidget>
#include <vector>

namespace gallery {

struct Page {
    QString name;                       // the tab's title, also the --page argument
    QWidget* (*make)(QWidget* parent);  // builds the page
};

QWidget* makeStyledTextPage(QWidget* parent);

// The pages in tab order.
inline std::vector<Page> pages() {
    return {
        {"Styled text", makeStyledTextPage},
    };
}

}  // namespace gallery
