// The window, dialog, event and module calls that the module uses, under their Windows names and
// with their Windows meaning. What a window is here, and how a user gets at it, is in
// dialog_shower.h.
#pragma once

#include "windows_stand_in/windows_types.h"

#define CALLBACK
using DLGPROC = INT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);

inline constexpr UINT WM_DESTROY = 0x0002;
inline constexpr UINT WM_CLOSE = 0x0010;
inline constexpr UINT WM_SETFONT = 0x0030;
inline constexpr UINT WM_INITDIALOG = 0x0110;
inline constexpr UINT WM_COMMAND = 0x0111;
inline constexpr UINT BM_GETCHECK = 0x00F0;
inline constexpr UINT BM_SETCHECK = 0x00F1;

inline constexpr WORD IDCANCEL = 2;
inline constexpr WORD BN_CLICKED = 0;
inline constexpr WPARAM BST_UNCHECKED = 0;
inline constexpr WPARAM BST_CHECKED = 1;
inline constexpr int GWLP_USERDATA = -21;
inline constexpr DWORD WAIT_OBJECT_0 = 0;
inline constexpr DWORD WAIT_TIMEOUT = 258;
inline constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;

inline constexpr DWORD WS_POPUP = 0x80000000;
inline constexpr DWORD WS_CHILD = 0x40000000;
inline constexpr DWORD WS_VISIBLE = 0x10000000;
inline constexpr DWORD WS_CAPTION = 0x00C00000;
inline constexpr DWORD WS_SYSMENU = 0x00080000;
inline constexpr DWORD WS_TABSTOP = 0x00010000;
inline constexpr DWORD DS_FIXEDSYS = 0x0008;
inline constexpr DWORD DS_SETFONT = 0x0040;
inline constexpr DWORD DS_MODALFRAME = 0x0080;
inline constexpr DWORD BS_TYPEMASK = 0x000F;
inline constexpr DWORD BS_PUSHBUTTON = 0x0000;
inline constexpr DWORD BS_DEFPUSHBUTTON = 0x0001;
inline constexpr DWORD BS_AUTOCHECKBOX = 0x0003;
inline constexpr DWORD BS_GROUPBOX = 0x0007;

constexpr WORD LOWORD(ULONG_PTR value) { return static_cast<WORD>(value & 0xFFFF); }
constexpr WPARAM MAKEWPARAM(WORD low, WORD high) {
    return static_cast<WPARAM>(low) | WPARAM{high} << 16;
}

/// An integer id in the form of a resource name.
inline LPCSTR MAKEINTRESOURCEA(WORD id) {
    return reinterpret_cast<LPCSTR>(static_cast<ULONG_PTR>(id));
}

/// The handle of the file's module; null unless it is the very module that this code is part of.
HMODULE GetModuleHandle(LPCTSTR fileName);

inline constexpr DWORD GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT = 2;
inline constexpr DWORD GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS = 4;

/// Knows the module that this code is part of, by an address in it, and no other form.
BOOL GetModuleHandleEx(DWORD flags, LPCTSTR address, HMODULE* module);
/// Writes the path of that module and returns its length; what does not fit is cut, and `size`
/// returned.
DWORD GetModuleFileName(HMODULE module, LPTSTR path, DWORD size);

/// Shows a dialog until it is ended and returns the code it was ended with; -1 when the module has
/// no such template or nobody shows the dialogs of `owner`.
INT_PTR DialogBoxParamA(HINSTANCE module, LPCSTR templateName, HWND owner, DLGPROC procedure,
                        LPARAM argument);
/// Creates a dialog as a child of `parent`, which destroys it when it is destroyed itself. Null
/// when the module has no such template.
HWND CreateDialogParamA(HINSTANCE module, LPCSTR templateName, HWND parent, DLGPROC procedure,
                        LPARAM argument);
/// Makes DialogBoxParamA return `code`; 0 when the window is not a dialog.
BOOL EndDialog(HWND dialog, INT_PTR code);

/// The user-data slot, the only one there is.
LONG_PTR SetWindowLongPtrA(HWND window, int slot, LONG_PTR value);
LONG_PTR GetWindowLongPtrA(HWND window, int slot);

/// In screen coordinates.
BOOL GetWindowRect(HWND window, RECT* rect);
/// The window's size; left and top are 0.
BOOL GetClientRect(HWND window, RECT* rect);
/// A child's position is relative to its parent, any other window's to the screen.
BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);

/// The control with this id, or null.
HWND GetDlgItem(HWND dialog, int id);
BOOL SetDlgItemTextA(HWND dialog, int id, LPCSTR text);
/// Returns whether the window was disabled before.
BOOL EnableWindow(HWND window, BOOL enable);
/// Controls answer BM_GETCHECK and BM_SETCHECK; dialogs hand everything to their procedure, whose
/// exceptions do not get through.
LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

/// Events are manual-reset, unnamed, and used by one thread; waiting is asking.
HANDLE CreateEventA(void* security, BOOL manualReset, BOOL signalled, LPCSTR name);
BOOL SetEvent(HANDLE event);
BOOL ResetEvent(HANDLE event);
DWORD WaitForSingleObject(HANDLE event, DWORD milliseconds);
BOOL CloseHandle(HANDLE event);
