// The gallery's pages beyond the first: each page is a function in its own file that builds the page's
// widget, listed once in pages().
#pragma once

#include <QString>
#include <QWidget>
#include <vector>

namespace gallery {

QWidget* makeTablesPage(QWidget* parent);
QWidget* makeStyledTextPage(QWidget* parent);
QWidget* makeAlertsPage(QWidget* parent);

struct Page {
    QString name;                       // the tab's title, also the --page argument
    QWidget* (*make)(QWidget* parent);  // builds the page
};

// The pages in tab order.
inline std::vector<Page> pages() {
    return {
        {QStringLiteral("Tables"), makeTablesPage},
        {QStringLiteral("Styled text"), makeStyledTextPage},
        {QStringLiteral("Alerts"), makeAlertsPage},
    };
}

}  // namespace gallery
