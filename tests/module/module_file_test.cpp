// The module as a file: what a host reads in it before it runs any of it.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace {

using Bytes = std::string;

class ModuleFile : public testing::Test {
  protected:
    ~ModuleFile() override { FreeLibrary(module); }

    [[nodiscard]] Bytes resource(LPCSTR type, WORD id, WORD language) const {
        HRSRC found = FindResourceExA(module, type, MAKEINTRESOURCEA(id), language);
        if (found == nullptr) return {};
        const auto* data = static_cast<const char*>(LockResource(LoadResource(module, found)));
        return {data, SizeofResource(module, found)};
    }

    template <typename T>
    [[nodiscard]] const T* at(DWORD offset) const {
        return reinterpret_cast<const T*>(reinterpret_cast<const char*>(module) + offset);
    }
    [[nodiscard]] const IMAGE_NT_HEADERS64& headers() const {
        return *at<IMAGE_NT_HEADERS64>(static_cast<DWORD>(at<IMAGE_DOS_HEADER>(0)->e_lfanew));
    }
    [[nodiscard]] const IMAGE_OPTIONAL_HEADER64& header() const { return headers().OptionalHeader; }
    [[nodiscard]] const IMAGE_DATA_DIRECTORY& directory(int index) const {
        return header().DataDirectory[index];
    }

    HMODULE module = LoadLibraryA(MODULE_FILE);
};

Bytes Number(unsigned value, int size) {
    Bytes bytes;
    for (int i = 0; i < size; ++i) bytes += static_cast<char>(std::uint64_t{value} >> 8 * i & 0xFF);
    return bytes;
}

// A four-character code as a little-endian number.
Bytes Code(Bytes text) {
    std::reverse(text.begin(), text.end());
    return text;
}

Bytes Padded(Bytes data) {
    data.resize((data.size() + 3) / 4 * 4);
    return data;
}

Bytes Name(const Bytes& text) { return Padded(static_cast<char>(text.size()) + text); }

Bytes Property(const char* key, const Bytes& data) {
    return Code("8BIM") + Code(key) + Number(0, 4) + Number(static_cast<unsigned>(data.size()), 4) +
           Padded(data);
}

TEST_F(ModuleFile, DescribesTheEffectToTheHost) {
    const Bytes expected =
        Number(1, 2) + Number(0, 4) + Number(12, 4) + Property("kind", Code("eFKT")) +
        Property("name", Name("nevrel")) + Property("catg", Name("KOVRA")) +
        Property("8664", Padded("EntryPointFunc")) + Property("ePVR", Number(2, 2) + Number(0, 2)) +
        Property("eSVR", Number(13, 2) + Number(0, 2)) + Property("eVER", Number(0x84601, 4)) +
        Property("eINF", Number(0, 2)) + Property("eGLO", Number(0x6000030, 4)) +
        Property("eGL2", Number(0x1418, 4)) + Property("eMNA", Name("KOVRA NEVREL")) +
        Property("aeFL", Number(0, 4));
    EXPECT_EQ(resource("PiPL", 16000, 1033), expected);
}

Bytes Wide(const Bytes& text) {
    Bytes wide;
    for (const char c : text + '\0') wide += Bytes{c, '\0'};
    return wide;
}

/// Help and extended style are none; the size is in dialog units.
Bytes Place(DWORD style, int x, int y, int width, int height, const Bytes& controls = {}) {
    Bytes bytes = Number(0, 8) + Number(style, 4) + controls;
    for (const int v : {x, y, width, height}) bytes += Number(static_cast<unsigned>(v), 2);
    return bytes;
}

Bytes Button(const Bytes& text, unsigned id, DWORD style, int x, int y, int width, int height) {
    return Place(WS_CHILD | WS_VISIBLE | style, x, y, width, height) + Number(id, 4) +
           Wide("BUTTON") + Wide(text) + Number(0, 2);
}

/// An extended template without menu and window class of its own.
Bytes Template(const Bytes& caption, DWORD style, int height, const std::vector<Bytes>& controls) {
    const Bytes count = Number(static_cast<unsigned>(controls.size()), 2);
    Bytes bytes = Number(0xFFFF0001, 4) + Place(style, 0, 0, 283, height, count) + Number(0, 4) +
                  Wide(caption) + Number(8, 2) + Number(400, 2) + Number(0, 1) + Number(1, 1) +
                  Wide("MS Shell Dlg");
    for (const Bytes& control : controls) bytes = Padded(bytes) + control;
    return bytes;
}

TEST_F(ModuleFile, HoldsTheDialogTemplates) {
    EXPECT_EQ(resource(RT_DIALOG, 101, 1041),
              Template("option",
                       WS_POPUP | WS_VISIBLE | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME |
                           DS_SETFONT | DS_FIXEDSYS,
                       273, {Button("OK", 1040, WS_TABSTOP | BS_DEFPUSHBUTTON, 226, 252, 50, 14)}));
    EXPECT_EQ(resource(RT_DIALOG, 103, 1041),
              Template("", WS_CHILD | WS_VISIBLE | DS_SETFONT | DS_FIXEDSYS, 94,
                       {Button("-", 1015, BS_GROUPBOX, 7, 6, 269, 80),
                        Button("-", 1011, WS_TABSTOP | BS_AUTOCHECKBOX, 66, 21, 199, 10),
                        Button("-", 1010, WS_TABSTOP | BS_PUSHBUTTON, 44, 38, 193, 14),
                        Button("-", 1012, WS_TABSTOP | BS_PUSHBUTTON, 44, 57, 193, 14)}));
}

TEST_F(ModuleFile, ExportsItsEntryPointAlone) {
    const auto& exports =
        *at<IMAGE_EXPORT_DIRECTORY>(directory(IMAGE_DIRECTORY_ENTRY_EXPORT).VirtualAddress);
    ASSERT_EQ(exports.NumberOfFunctions, 1U);
    ASSERT_EQ(exports.NumberOfNames, 1U);
    EXPECT_STREQ(at<char>(*at<DWORD>(exports.AddressOfNames)), "EntryPointFunc");
}

TEST_F(ModuleFile, NeedsSystemLibrariesAlone) {
    std::set<std::string> libraries;
    const auto* entry =
        at<IMAGE_IMPORT_DESCRIPTOR>(directory(IMAGE_DIRECTORY_ENTRY_IMPORT).VirtualAddress);
    for (; entry->Name != 0; ++entry) libraries.insert(at<char>(entry->Name));
    EXPECT_FALSE(libraries.empty());
    const std::set<std::string> system{"KERNEL32.dll", "USER32.dll", "msvcrt.dll"};
    for (const std::string& library : libraries) EXPECT_TRUE(system.contains(library)) << library;
}

TEST_F(ModuleFile, IsHardened) {
    constexpr WORD wanted = IMAGE_DLLCHARACTERISTICS_DYNAMIC_BASE |
                            IMAGE_DLLCHARACTERISTICS_NX_COMPAT |
                            IMAGE_DLLCHARACTERISTICS_HIGH_ENTROPY_VA;
    EXPECT_EQ(header().DllCharacteristics & wanted, wanted);
    EXPECT_NE(directory(IMAGE_DIRECTORY_ENTRY_BASERELOC).Size, 0U)
        << "without relocations it cannot move";
    EXPECT_EQ(headers().FileHeader.NumberOfSymbols, 0U) << "it is not stripped";
}

}  // namespace
