// The alert presenter: headless by default, replaceable by the interface library and by tests.
#include "BrevantCocoaExtensions/platform/AlertCenter.hpp"

#include <cstdio>
#include <utility>

namespace bv {

namespace {
AlertCenter::Presenter& currentPresenter() {
    static AlertCenter::Presenter presenter;
    return presenter;
}

AlertCenter::SheetPresenter& currentSheetPresenter() {
    static AlertCenter::SheetPresenter presenter;
    return presenter;
}

int showHeadless(const Alert& alert) {
    std::string line = alert.title.toUtf8() + ": " + alert.message.toUtf8();
    if (!alert.buttons.empty()) line += " [" + alert.buttons.front().toUtf8() + "]";
    std::fprintf(stderr, "%s\n", line.c_str());
    return 0;
}
}  // namespace

int AlertCenter::show(const Alert& alert) {
    if (const Presenter& presenter = currentPresenter()) return presenter(alert);
    return showHeadless(alert);
}

AlertCenter::Presenter AlertCenter::setPresenter(Presenter presenter) {
    return std::exchange(currentPresenter(), std::move(presenter));
}

void AlertCenter::beginSheet(const Alert& alert, void* window, SheetCompletion done) {
    if (SheetPresenter presenter = currentSheetPresenter()) return presenter(alert, window, std::move(done));
    const int chosen = show(alert);
    if (done) done(chosen);
}

AlertCenter::SheetPresenter AlertCenter::setSheetPresenter(SheetPresenter presenter) {
    return std::exchange(currentSheetPresenter(), std::move(presenter));
}

AlertRecorder::AlertRecorder(int answer) {
    previousSheetPresenter_ = AlertCenter::setSheetPresenter(nullptr);  // sheets come through show()
    previous_ = AlertCenter::setPresenter([this, answer](const Alert& alert) {
        alerts_.push_back(alert);
        return answer;
    });
}

AlertRecorder::~AlertRecorder() {
    AlertCenter::setPresenter(std::move(previous_));
    AlertCenter::setSheetPresenter(std::move(previousSheetPresenter_));
}

}  // namespace bv
