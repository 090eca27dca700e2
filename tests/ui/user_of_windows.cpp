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

struct Search {
    int controlId;
    HWND found;
};

HWND FindControl(HWND dialog, int id) {
    Search search{id, nullptr};
    const auto visit = [](HWND child, LPARAM argument) -> BOOL {
        auto& wanted = *reinterpret_cast<Search*>(argument);
        if (GetDlgCtrlID(child) == wanted.controlId && !IsDialog(child)) wanted.found = child;
        return wanted.found == nullptr;
    };
    EnumChildWindows(dialog, visit, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// Presses the left mouse button and lets it go. Each event carries the place, so that nothing can
// come between.
void ClickAt(LONG x, LONG y) {
    std::array<INPUT, 2> events{};
    for (INPUT& event : events) {
        event.type = INPUT_MOUSE;
        event.mi.dx = MulDiv(x, 65536, GetSystemMetrics(SM_CXSCREEN)) + 1;
        event.mi.dy = MulDiv(y, 65536, GetSystemMetrics(SM_CYSCREEN)) + 1;
        event.mi.dwFlags = MOUSEEVENTF_ABSOLUTE | MOUSEEVENTF_MOVE;
    }
    events[0].mi.dwFlags |= MOUSEEVENTF_LEFTDOWN;
    events[1].mi.dwFlags |= MOUSEEVENTF_LEFTUP;
    SendInput(static_cast<UINT>(events.size()), events.data(), sizeof(INPUT));
}

void PressEscape() {
    std::array<INPUT, 2> events{};
    for (INPUT& event : events) {
        event.type = INPUT_KEYBOARD;
        event.ki.wVk = VK_ESCAPE;
    }
    events[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(static_cast<UINT>(events.size()), events.data(), sizeof(INPUT));
}

void ClickCenter(RECT place) {
    ClickAt((place.left + place.right) / 2, (place.top + place.bottom) / 2);
}

// Where the caption says that its close box is.
void ClickCloseBox(HWND dialog) {
    const RECT place = PlaceOf(dialog);
    const LONG y = (place.top + ClientPlaceOf(dialog).top) / 2;
    LONG x = place.right;
    while (--x >= place.left &&
           SendMessageA(dialog, WM_NCHITTEST, 0, MAKELPARAM(x, y)) != HTCLOSE) {
    }
    ClickAt(x - 2, y);
}

void Perform(HWND dialog, int action) {
    if (action == kEscape) {
        PressEscape();
    } else if (action == kCloseBox) {
        ClickCloseBox(dialog);
    } else if (HWND control = FindControl(dialog, action)) {
        ClickCenter(PlaceOf(control));
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
