// bv::AlertCenter: modal alerts for the checks that only an interactive application makes.
//
// The library shows an alert (style, title, message, buttons) and gets back the index of the button
// chosen. Without a presenter installed (a command-line program, a server), the headless default writes
// one line to standard error and answers the default button, index 0. The interface library installs a
// Qt presenter; tests install an AlertRecorder and assert the exact texts.
//
// A sheet is an alert attached to one window that ends later: beginSheet hands it to the sheet presenter
// (the interface library's opens a window-modal box and returns at once). Without a sheet presenter the
// sheet is shown through show() and ends before beginSheet returns.
#pragma once

#include <functional>
#include <vector>

#include "BrevantCocoaExtensions/platform/Text.hpp"

namespace bv {

enum class AlertStyle { Warning, Informational, Critical };

struct Alert {
    AlertStyle style = AlertStyle::Warning;
    Text title;
    Text message;
    std::vector<Text> buttons;  // the first is the default button
};

class AlertCenter {
  public:
    using Presenter = std::function<int(const Alert&)>;
    // Called once when a sheet ends, with the index of the button chosen.
    using SheetCompletion = std::function<void(int)>;
    // Shows a sheet on a window (the toolkit's window object, passed through untouched).
    using SheetPresenter = std::function<void(const Alert&, void* window, SheetCompletion done)>;

    // Shows the alert and answers the index of the chosen button.
    static int show(const Alert& alert);
    // Installs a presenter and answers the previous one; an empty presenter restores the headless default.
    static Presenter setPresenter(Presenter presenter);

    // Shows the alert as a sheet on the window and calls done once with the chosen button's index.
    static void beginSheet(const Alert& alert, void* window, SheetCompletion done);
    // Installs a sheet presenter and answers the previous one; an empty one shows sheets through show().
    static SheetPresenter setSheetPresenter(SheetPresenter presenter);
};

// Records every alert shown while it lives, sheets included, and answers `answer` to each (a sheet ends
// at once); restores the previous presenters when destroyed.
class AlertRecorder {
  public:
    explicit AlertRecorder(int answer = 0);
    ~AlertRecorder();
    AlertRecorder(const AlertRecorder&) = delete;
    AlertRecorder& operator=(const AlertRecorder&) = delete;

    [[nodiscard]] const std::vector<Alert>& alerts() const noexcept { return alerts_; }

  private:
    std::vector<Alert> alerts_;
    AlertCenter::Presenter previous_;
    AlertCenter::SheetPresenter previousSheetPresenter_;
};

}  // namespace bv
