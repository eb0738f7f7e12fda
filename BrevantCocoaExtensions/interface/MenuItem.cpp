// Menu-item properties on QAction.
#include "BrevantCocoaExtensions/interface/MenuItem.hpp"

#include <QKeySequence>
#include <QMenu>
#include <QPointer>
#include <QVariant>

namespace bv::MenuItem {

namespace {
constexpr const char* tagKey = "bvTag";
constexpr const char* mixedKey = "bvMixed";
constexpr const char* targetKey = "bvTarget";
constexpr const char* actionKey = "bvAction";
constexpr const char* keyEquivalentKey = "bvKeyEquivalent";
constexpr const char* titleColorKey = "bvTitleColor";
constexpr const char* connectedKey = "bvConnected";

void copyProperties(const QAction* from, QAction* to) {
    for (const char* key : {tagKey, mixedKey, targetKey, actionKey, keyEquivalentKey, titleColorKey}) {
        to->setProperty(key, from->property(key));
    }
}
}  // namespace

int tag(const QAction* item) {
    return item->property(tagKey).toInt();
}

void setTag(QAction* item, int tag) {
    item->setProperty(tagKey, tag);
}

int state(const QAction* item) {
    if (item->property(mixedKey).toBool()) return Mixed;
    return item->isChecked() ? On : Off;
}

void setState(QAction* item, int state) {
    item->setProperty(mixedKey, state == Mixed);
    if (state != Off) item->setCheckable(true);
    item->setChecked(state == On);
}

QObject* target(const QAction* item) {
    return item->property(targetKey).value<QPointer<QObject>>().data();
}

QByteArray action(const QAction* item) {
    return item->property(actionKey).toByteArray();
}

void setTargetAndAction(QAction* item, QObject* target, const QByteArray& action) {
    item->setProperty(targetKey, QVariant::fromValue(QPointer<QObject>(target)));
    item->setProperty(actionKey, action);
    if (!item->property(connectedKey).toBool()) {
        QObject::connect(item, &QAction::triggered, item, [item] { perform(item); });
        item->setProperty(connectedKey, true);
    }
}

Text title(const QAction* item) {
    return fromQString(item->text());
}

void setTitle(QAction* item, const Text& title) {
    item->setText(toQString(title));
}

Text keyEquivalent(const QAction* item) {
    return fromQString(item->property(keyEquivalentKey).toString());
}

void setKeyEquivalent(QAction* item, const Text& key) {
    item->setProperty(keyEquivalentKey, toQString(key));
    item->setShortcut(QKeySequence(toQString(key)));
}

std::optional<AttributedTitle> attributedTitle(const QAction* item) {
    const QVariant color = item->property(titleColorKey);
    if (!color.isValid()) return std::nullopt;
    return AttributedTitle{title(item), TextAttributes{item->font(), color.value<QColor>()}};
}

void setAttributedTitle(QAction* item, const AttributedTitle& title) {
    setTitle(item, title.text);
    item->setFont(title.attributes.font);
    item->setProperty(titleColorKey, title.attributes.foregroundColor);
}

bool perform(QAction* item) {
    QObject* receiver = target(item);
    const QByteArray method = action(item);
    if (!receiver || method.isEmpty()) return false;
    return QMetaObject::invokeMethod(receiver, method.constData(), Qt::DirectConnection,
                                     Q_ARG(QAction*, item));
}

QAction* newItem(const Text& title, int tag, QObject* target, const QByteArray& action,
                 const Text& keyEquivalent, QObject* parent) {
    auto* item = new QAction(toQString(title), parent);
    setTag(item, tag);
    setTargetAndAction(item, target, action);
    setKeyEquivalent(item, keyEquivalent);
    return item;
}

QAction* copyOfItem(const QAction* item, QWidget* parent) {
    auto* copy = new QAction(item->icon(), item->text(), parent);
    copy->setSeparator(item->isSeparator());
    copy->setFont(item->font());
    copy->setShortcut(item->shortcut());
    copy->setCheckable(item->isCheckable());
    copy->setChecked(item->isChecked());
    copy->setEnabled(item->isEnabled());
    copyProperties(item, copy);
    copy->setProperty(connectedKey, false);
    if (target(item)) setTargetAndAction(copy, target(item), action(item));
    if (const QMenu* submenu = item->menu()) {
        auto* submenuCopy = new QMenu(submenu->title(), parent);
        for (const QAction* child : submenu->actions())
            submenuCopy->addAction(copyOfItem(child, submenuCopy));
        copy->setMenu(submenuCopy);
    }
    return copy;
}

}  // namespace bv::MenuItem
