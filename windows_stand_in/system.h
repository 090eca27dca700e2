// The system calls that the module uses, other than those of windows and dialogs: what each does
// here, where there is no Windows. Names and meanings are the Windows ones, as far as the module
// relies on them.
#pragma once

#include "windows_stand_in/windows_types.h"

inline constexpr int VK_SHIFT = 0x10;

/// The command line of this process as one string: the arguments joined by blanks, those that hold
/// blanks or tabs in double quotes. Empty where the system does not tell. The string lives as long
/// as the process.
[[nodiscard]] const char* GetCommandLineA();

/// The multibyte code page of the locale named by the environment (LC_ALL, LC_CTYPE, LANG): 932 for
/// Japanese, 0 (none) for every other.
[[nodiscard]] int _getmbcp();  // NOLINT(bugprone-reserved-identifier): the runtime's name

/// Negative while a key is held down. There is no keyboard here: Shift counts as down while the
/// environment variable NEVREL_SHIFT is set to anything but nothing or "0"; every other key is up.
[[nodiscard]] short GetKeyState(int virtualKey);

/// The integer that `file` holds for `key` in `section`, modulo 2^32; 0 when the text is no decimal
/// integer; `fallback` when the file, the section, the key or its text is missing. Names are
/// compared without regard to case.
[[nodiscard]] unsigned GetPrivateProfileInt(LPCTSTR section, LPCTSTR key, int fallback,
                                            LPCTSTR file);

/// Sets `key` in `section` of `file`, which is created as needed and replaced as a whole; every
/// other byte of it stays. Returns 0 on failure, when the file is as it was.
int WritePrivateProfileString(LPCTSTR section, LPCTSTR key, LPCTSTR value, LPCTSTR file);

inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;

/// INVALID_FILE_ATTRIBUTES when there is no such file or folder.
[[nodiscard]] DWORD GetFileAttributes(LPCTSTR path);
