// bv::MenuItem: the menu-item properties the menu helpers work with, kept on a QAction: an integer tag, a
// state (off 0, on 1, mixed -1), a target and action told when the item is chosen, a key equivalent and a
// styled title.
//
// The action is the name of an invokable method (a slot or Q_INVOKABLE) of the target that takes the item,
// `void choose(QAction* item)`; the target is not owned and may go away (the item then tells nobody).
#pragma once

#include <QAction>
#include <QByteArray>
#include <QObject>
#include <optional>

#include "BrevantCocoaExtensions/interface/QtText.hpp"
#include "BrevantCocoaExtensions/interface/TextAttributes.hpp"
#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv::MenuItem {

enum State { Mixed = -1, Off = 0, On = 1 };

// The tag; 0 for an item that never got one.
[[nodiscard]] int tag(const QAction* item);
void setTag(QAction* item, int tag);
// On is the checked state; mixed is kept beside it (the item shows unchecked).
[[nodiscard]] int state(const QAction* item);
void setState(QAction* item, int state);
[[nodiscard]] QObject* target(const QAction* item);
[[nodiscard]] QByteArray action(const QAction* item);
// Sets both; choosing the item (triggered) then tells the target.
void setTargetAndAction(QAction* item, QObject* target, const QByteArray& action);
// The title as a Text (the QAction's text).
[[nodiscard]] Text title(const QAction* item);
void setTitle(QAction* item, const Text& title);
// The key equivalent as given ("" when none); it becomes the item's shortcut.
[[nodiscard]] Text keyEquivalent(const QAction* item);
void setKeyEquivalent(QAction* item, const Text& key);
// The styled title, when one was set; its text and font show in the menu.
[[nodiscard]] std::optional<AttributedTitle> attributedTitle(const QAction* item);
void setAttributedTitle(QAction* item, const AttributedTitle& title);
// Sends the item's action to its target with the item as the argument; false when there is no living
// target or it has no such method.
bool perform(QAction* item);
// A new item with all five properties, owned by `parent` (none: the caller owns it).
[[nodiscard]] QAction* newItem(const Text& title, int tag, QObject* target, const QByteArray& action,
                               const Text& keyEquivalent, QObject* parent);
// A copy of the item (and of its submenu, recursively) owned by `parent`.
[[nodiscard]] QAction* copyOfItem(const QAction* item, QWidget* parent);

}  // namespace bv::MenuItem
