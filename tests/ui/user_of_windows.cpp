#include <gtest/gtest.h>

#include <array>

#include "tests/ui/user.h"

namespace test {

namespace {

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

std::vector<int> toDo;
std::optional<SeenDialog> seen;
HWND owner = nullptr;

/// Called from the message loop of the dialog that has opened.
void CALLBACK Work(HWND /*window*/, UINT /*message*/, UINT_PTR /*timer*/, DWORD /*time*/) {
    HWND dialog = GetLastActivePopup(owner);
    if (!IsDialog(dialog) || !IsWindowVisible(dialog)) return;
    if (seen) {
        ADD_FAILURE() << "the last action did not end the dialog";
        PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
        return;
    }
    seen = LookAt(dialog);
    for (const int action : toDo) Perform(dialog, action);
}

}  // namespace

struct User::Seat {
    HWND window = CreateWindowExA(
        0, "STATIC", "main window", WS_OVERLAPPEDWINDOW | WS_VISIBLE, mainWindowPlace.left,
        mainWindowPlace.top, mainWindowPlace.right - mainWindowPlace.left,
        mainWindowPlace.bottom - mainWindowPlace.top, nullptr, nullptr, nullptr, nullptr);
};

User::User() : seat_(std::make_unique<Seat>()) {}

User::~User() { DestroyWindow(seat_->window); }

HWND User::mainWindow() const { return seat_->window; }

std::optional<SeenDialog> User::work(const std::vector<int>& actions,
                                     const std::function<void()>& show) {
    toDo = actions;
    seen.reset();
    owner = mainWindow();
    const UINT_PTR timer = SetTimer(nullptr, 0, 50, Work);
    show();
    KillTimer(nullptr, timer);
    return seen;
}

}  // namespace test
