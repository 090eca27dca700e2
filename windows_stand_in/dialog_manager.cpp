#include "windows_stand_in/dialog_manager.h"

#include <dlfcn.h>

#include <algorithm>
#include <cassert>
#include <filesystem>
#include <string_view>
#include <utility>

#include "windows_stand_in/dialog_shower.h"
#include "windows_stand_in/dialog_template.h"

namespace {

// Average character size of the dialogs' font, in pixels; a dialog unit is a quarter of the width
// and an eighth of the height.
constexpr LONG fontWidth = 6;
constexpr LONG fontHeight = 13;

constexpr LONG PixelsOf(LONG units, LONG fontSize, LONG unitsPerCharacter) {
    return (units * fontSize + unitsPerCharacter / 2) / unitsPerCharacter;
}

RECT RectOf(LONG x, LONG y, LONG width, LONG height) {
    const LONG left = PixelsOf(x, fontWidth, 4);
    const LONG top = PixelsOf(y, fontHeight, 8);
    return {left, top, left + PixelsOf(width, fontWidth, 4), top + PixelsOf(height, fontHeight, 8)};
}

Dl_info OwnModule() {
    Dl_info info{};
    dladdr(reinterpret_cast<void*>(&OwnModule), &info);
    return info;
}

HMODULE OwnHandle() { return static_cast<HMODULE>(OwnModule().dli_fbase); }

const DialogTemplate* FindTemplate(HINSTANCE module, LPCSTR name) {
    if (module != OwnHandle()) return nullptr;
    for (const DialogTemplate& candidate : ModuleDialogTemplates()) {
        if (MAKEINTRESOURCEA(candidate.id) == name) return &candidate;
    }
    return nullptr;
}

std::unique_ptr<Window> MakeControl(const ControlTemplate& source, Window* dialog) {
    auto control = std::make_unique<Window>();
    control->rect = RectOf(source.x, source.y, source.width, source.height);
    control->parent = dialog;
    control->style = source.style;
    control->id = source.id;
    control->text = source.text;
    return control;
}

std::unique_ptr<Window> MakeDialog(const DialogTemplate& source, Window* parent,
                                   DLGPROC procedure) {
    auto dialog = std::make_unique<Window>();
    dialog->rect = RectOf(0, 0, source.width, source.height);
    dialog->parent = parent;
    dialog->style = source.style;
    dialog->text = source.caption;
    dialog->procedure = procedure;
    return dialog;
}

// What a dialog goes through once its window is there: its font, its controls, its own
// initialisation.
void InitDialog(Window* dialog, std::span<const ControlTemplate> controls, LPARAM argument) {
    SendMessageA(dialog, WM_SETFONT, 0, FALSE);
    for (const ControlTemplate& control : controls)
        dialog->children.push_back(MakeControl(control, dialog));
    SendMessageA(dialog, WM_INITDIALOG, 0, argument);
}

// A parent hears of the end before its children, all of which are still there.
void SendDestroy(Window* window) {
    SendMessageA(window, WM_DESTROY, 0, 0);
    for (const auto& child : window->children) SendDestroy(child.get());
}

// The control on the dialog or on one of its pages.
Window* FindControl(Window* dialog, int id) {
    Window* control = GetDlgItem(dialog, id);
    for (auto child = dialog->children.begin();
         control == nullptr && child != dialog->children.end(); ++child) {
        control = FindControl(child->get(), id);
    }
    return control;
}

void Click(Window* control) {
    const DWORD type = control->style & BS_TYPEMASK;
    if (!control->enabled || type == BS_GROUPBOX) return;
    if (type == BS_AUTOCHECKBOX) control->checked = !control->checked;
    SendMessageA(control->parent, WM_COMMAND,
                 MAKEWPARAM(static_cast<WORD>(control->id), BN_CLICKED),
                 reinterpret_cast<LPARAM>(control));
}

void Perform(Window* dialog, const UserAction& action) {
    switch (action.kind) {
        case UserActionKind::Click:
            if (Window* control = FindControl(dialog, action.controlId)) Click(control);
            break;
        case UserActionKind::CloseBox:
            if (SendMessageA(dialog, WM_CLOSE, 0, 0) != 0) break;
            [[fallthrough]];
        case UserActionKind::Escape:
            SendMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), 0);
            break;
    }
}

RECT RectOnScreen(const Window* window) {
    RECT rect = window->rect;
    if ((window->style & WS_CHILD) != 0) {
        const RECT parent = RectOnScreen(window->parent);
        rect = {rect.left + parent.left, rect.top + parent.top, rect.right + parent.left,
                rect.bottom + parent.top};
    }
    return rect;
}

struct Event {
    bool signalled;
};

}  // namespace

HMODULE GetModuleHandle(LPCTSTR fileName) {
    std::error_code error;
    const Dl_info own = OwnModule();
    const bool same =
        own.dli_fname != nullptr && std::filesystem::equivalent(fileName, own.dli_fname, error);
    return same ? static_cast<HMODULE>(own.dli_fbase) : nullptr;
}

BOOL GetModuleHandleEx(DWORD /*flags*/, LPCTSTR /*address*/, HMODULE* module) {
    *module = OwnHandle();
    return *module != nullptr ? TRUE : FALSE;
}

DWORD GetModuleFileName(HMODULE module, LPTSTR path, DWORD size) {
    const Dl_info own = OwnModule();
    if (module != own.dli_fbase || own.dli_fname == nullptr || size == 0) return 0;
    const std::string_view name = own.dli_fname;
    const std::size_t length = name.copy(path, size - 1);
    path[length] = '\0';
    return length < name.size() ? size : static_cast<DWORD>(length);
}

INT_PTR DialogBoxParamA(HINSTANCE module, LPCSTR templateName, HWND owner, DLGPROC procedure,
                        LPARAM argument) {
    const DialogTemplate* source = FindTemplate(module, templateName);
    if (source == nullptr || owner == nullptr || owner->shower == nullptr) return -1;
    const auto dialog = MakeDialog(*source, owner, procedure);
    InitDialog(dialog.get(), source->controls, argument);
    while (!dialog->ended) Perform(dialog.get(), owner->shower->nextAction(*dialog));
    SendDestroy(dialog.get());
    return dialog->endCode;
}

HWND CreateDialogParamA(HINSTANCE module, LPCSTR templateName, HWND parent, DLGPROC procedure,
                        LPARAM argument) {
    assert(parent != nullptr);
    const DialogTemplate* source = FindTemplate(module, templateName);
    if (source == nullptr) return nullptr;
    parent->children.push_back(MakeDialog(*source, parent, procedure));
    HWND dialog = parent->children.back().get();
    InitDialog(dialog, source->controls, argument);
    return dialog;
}

BOOL EndDialog(HWND dialog, INT_PTR code) {
    if (dialog == nullptr || dialog->procedure == nullptr) return FALSE;
    dialog->ended = true;
    dialog->endCode = code;
    return TRUE;
}

LONG_PTR SetWindowLongPtrA(HWND window, [[maybe_unused]] int slot, LONG_PTR value) {
    assert(slot == GWLP_USERDATA);
    return std::exchange(window->userData, value);
}

LONG_PTR GetWindowLongPtrA(HWND window, [[maybe_unused]] int slot) {
    assert(slot == GWLP_USERDATA);
    return window->userData;
}

BOOL GetWindowRect(HWND window, RECT* rect) {
    if (window == nullptr) return FALSE;
    *rect = RectOnScreen(window);
    return TRUE;
}

BOOL GetClientRect(HWND window, RECT* rect) {
    *rect = {0, 0, window->rect.right - window->rect.left, window->rect.bottom - window->rect.top};
    return TRUE;
}

BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL /*repaint*/) {
    window->rect = {x, y, x + width, y + height};
    return TRUE;
}

HWND GetDlgItem(HWND dialog, int id) {
    const auto found =
        std::ranges::find_if(dialog->children, [id](const auto& child) { return child->id == id; });
    return found == dialog->children.end() ? nullptr : found->get();
}

BOOL SetDlgItemTextA(HWND dialog, int id, LPCSTR text) {
    HWND control = GetDlgItem(dialog, id);
    if (control == nullptr) return FALSE;
    control->text = text;
    return TRUE;
}

BOOL EnableWindow(HWND window, BOOL enable) {
    return std::exchange(window->enabled, enable != FALSE) ? FALSE : TRUE;
}

LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    if (window->procedure != nullptr) return window->procedure(window, message, wParam, lParam);
    if (message == BM_GETCHECK)
        return static_cast<LRESULT>(window->checked ? BST_CHECKED : BST_UNCHECKED);
    if (message == BM_SETCHECK) window->checked = wParam == BST_CHECKED;
    return 0;
}

HANDLE CreateEventA(void* /*security*/, [[maybe_unused]] BOOL manualReset, BOOL signalled,
                    [[maybe_unused]] LPCSTR name) {
    assert(manualReset && name == nullptr);
    return new Event{signalled != FALSE};
}

BOOL SetEvent(HANDLE event) {
    static_cast<Event*>(event)->signalled = true;
    return TRUE;
}

BOOL ResetEvent(HANDLE event) {
    static_cast<Event*>(event)->signalled = false;
    return TRUE;
}

DWORD WaitForSingleObject(HANDLE event, [[maybe_unused]] DWORD milliseconds) {
    assert(milliseconds == 0);
    return static_cast<Event*>(event)->signalled ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
}

BOOL CloseHandle(HANDLE event) {
    delete static_cast<Event*>(event);
    return TRUE;
}
