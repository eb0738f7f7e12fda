// bv::AlertCenter: modal alerts for the checks that only an interactive application makes.
//
// The library shows an alert (style, title, message, buttons) and gets back the index of the button
// chosen. Without a presenter installed (a command-line program, a server), the headless default writes
// one line to standard error and answers the default button, index 0. The interface library installs a
// Qt presenter; tests install an AlertRecorder and assert the exact texts.
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

    // Shows the alert and answers the index of the chosen button.
    static int show(const Alert& alert);
    // Installs a presenter and answers the previous one; an empty presenter restores the headless default.
    static Presenter setPresenter(Presenter presenter);
};

// Records every alert shown while it lives and answers `answer` to each; restores the previous
// presenter when destroyed.
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
};

}  // namespace bv
