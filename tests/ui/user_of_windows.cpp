#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <thread>

#include "tests/ui/user.h"

namespace test {

namespace {

using namespace std::chrono_literals;

bool IsDialog(HWND window) {
    std::array<char, 32> name{};
    GetClassNameA(window, name.data(), static_cast<int>(name.size()));
    return std::string(name.data()) == "#32770";
}

std::string TextOf(HWND window) {
    std::array<char, 256> text{};
    GetWindowTextA(window, text.data(), static_cast<int>(text.size()));
    return text.data();
}

RECT PlaceOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

RECT ClientPlaceOf(HWND window) {
    RECT place{};
    GetClientRect(window, &place);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

BOOL CALLBACK LookAtChild(HWND child, LPARAM argument) {
    auto& seen = *reinterpret_cast<SeenDialog*>(argument);
    if (IsDialog(child)) {
        seen.page = PlaceOf(child);
    } else {
        const bool checked = SendMessageA(child, BM_GETCHECK, 0, 0) == BST_CHECKED;
        seen.controls[GetDlgCtrlID(child)] = {TextOf(child), IsWindowEnabled(child) != FALSE,
                                              checked};
    }
    return TRUE;
}

SeenDialog LookAt(HWND dialog) {
    SeenDialog seen{TextOf(dialog), PlaceOf(dialog), ClientPlaceOf(dialog), {}, {}};
    EnumChildWindows(dialog, LookAtChild, reinterpret_cast<LPARAM>(&seen));
    return seen;
}

/// The control on the dialog or on its page.
HWND FindControl(HWND dialog, int id) {
    if (HWND control = GetDlgItem(dialog, id)) return control;
    HWND page = FindWindowExA(dialog, nullptr, "#32770", nullptr);
    return page == nullptr ? nullptr : GetDlgItem(page, id);
}

void Perform(HWND dialog, int action) {
    if (action == escape) {
        PostMessageA(dialog, WM_KEYDOWN, VK_ESCAPE, 0);
    } else if (action == closeBox) {
        PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    } else if (HWND control = FindControl(dialog, action)) {
        // A disabled control gets nothing of a user, but would act on a message.
        if (IsWindowEnabled(control)) SendMessageA(control, BM_CLICK, 0, 0);
    } else {
        ADD_FAILURE() << "no control " << action;
    }
}

}  // namespace

struct User::Seat {
    HWND window = nullptr;
    std::vector<int> actions;
    std::optional<SeenDialog> seen;
    std::atomic<bool> stop{false};
    std::thread hands;

    HWND openDialog() const {
        HWND dialog = nullptr;
        const auto visit = [](HWND candidate, LPARAM argument) -> BOOL {
            auto& found = *reinterpret_cast<HWND*>(argument);
            if (IsDialog(candidate) && IsWindowVisible(candidate)) found = candidate;
            return found == nullptr;
        };
        EnumThreadWindows(GetWindowThreadProcessId(window, nullptr), visit,
                          reinterpret_cast<LPARAM>(&dialog));
        return dialog;
    }

    void run() {
        HWND dialog = nullptr;
        for (; !stop && dialog == nullptr; std::this_thread::sleep_for(10ms)) dialog = openDialog();
        if (dialog == nullptr) return;
        seen = LookAt(dialog);
        for (int action : actions) Perform(dialog, action);
        const auto deadline = std::chrono::steady_clock::now() + 20s;
        while (IsWindow(dialog) && std::chrono::steady_clock::now() < deadline)
            std::this_thread::sleep_for(10ms);
        if (!IsWindow(dialog)) return;
        ADD_FAILURE() << "the last action did not end the dialog";
        PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    }
};

User::User(RECT place) : seat_(std::make_unique<Seat>()) {
    seat_->window = CreateWindowExA(0, "STATIC", "main window", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                    place.left, place.top, place.right - place.left,
                                    place.bottom - place.top, nullptr, nullptr, nullptr, nullptr);
}

User::~User() { DestroyWindow(seat_->window); }

HWND User::mainWindow() const { return seat_->window; }

void User::begin(std::vector<int> actions) {
    seat_->actions = std::move(actions);
    seat_->seen.reset();
    seat_->stop = false;
    seat_->hands = std::thread([seat = seat_.get()] { seat->run(); });
}

std::optional<SeenDialog> User::end() {
    seat_->stop = true;
    seat_->hands.join();
    return seat_->seen;
}

}  // namespace test
