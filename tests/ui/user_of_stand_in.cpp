#include <gtest/gtest.h>

#include <deque>

#include "tests/ui/user.h"
#include "windows_stand_in/dialog_shower.h"

namespace test {

namespace {

RECT PlaceOf(const Window& window) {
    RECT place{};
    GetWindowRect(const_cast<HWND>(&window), &place);
    return place;
}

void Look(const Window& window, SeenDialog& seen) {
    for (const auto& child : window.children) {
        if (child->procedure == nullptr) {
            seen.controls[child->id] = {child->text, child->enabled, child->checked};
        } else {
            seen.page = PlaceOf(*child);
            Look(*child, seen);
        }
    }
}

UserAction ActionOf(int action) {
    if (action == escape) return {UserActionKind::Escape};
    if (action == closeBox) return {UserActionKind::CloseBox};
    return {UserActionKind::Click, action};
}

}  // namespace

struct User::Seat : DialogShower {
    UserAction nextAction(const Window& dialog) override {
        if (!seen) {
            seen = {dialog.text, PlaceOf(dialog), PlaceOf(dialog), {}, {}};
            Look(dialog, *seen);
        }
        if (actions.empty()) {
            ADD_FAILURE() << "the last action did not end the dialog";
            return {UserActionKind::CloseBox};
        }
        const int action = actions.front();
        actions.pop_front();
        return ActionOf(action);
    }

    Window window{.rect = mainWindowPlace, .shower = this};
    std::deque<int> actions;
    std::optional<SeenDialog> seen;
};

User::User() : seat_(std::make_unique<Seat>()) {}

User::~User() = default;

HWND User::mainWindow() const { return &seat_->window; }

std::optional<SeenDialog> User::work(const std::vector<int>& actions,
                                     const std::function<void()>& show) {
    seat_->actions.assign(actions.begin(), actions.end());
    seat_->seen.reset();
    show();
    EXPECT_TRUE(!seat_->seen || seat_->actions.empty())
        << "the dialog ended before the last action";
    return seat_->seen;
}

}  // namespace test
