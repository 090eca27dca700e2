// The dialog framework over the dialog manager: which messages come in which order, and a dialog's
// three states.
#include "ui/dialog.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "resources/dialogs.h"
#include "tests/ui/user.h"

namespace {

using Messages = std::vector<std::string>;

// Notes the messages that the module relies on; the manager may send others in between.
struct Log {
    Messages messages;

    void note(const char* who, UINT message, WPARAM wParam) {
        const std::string name(who);
        if (message == WM_SETFONT) messages.push_back(name + " font");
        if (message == WM_INITDIALOG) messages.push_back(name + " init");
        if (message == WM_COMMAND)
            messages.push_back(name + " command " + std::to_string(LOWORD(wParam)));
        if (message == WM_DESTROY) messages.push_back(name + " destroy");
    }
};

struct Page : DialogComponent {
    explicit Page(Log& messages) : log(messages) {}

    INT_PTR handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM /*lParam*/) override {
        log.note("page", message, wParam);
        if (message == WM_DESTROY) checkboxAtEnd = GetDlgItem(window, GROUP_CHECKBOX_ID) != nullptr;
        return 0;
    }

    Log& log;
    bool checkboxAtEnd = false;
};

struct TestDialog : DialogWindow {
    explicit TestDialog(HWND owner) {
        instance = ModuleWithTemplates();
        templateId = MAKEINTRESOURCEA(OPTION_DIALOG_ID);
        parent = owner;
    }

    static HMODULE ModuleWithTemplates() {
#ifdef _WIN32
        static HMODULE module = LoadLibraryA(MODULE_FILE);
        return module;
#else
        return GetModuleHandleA("/proc/self/exe");
#endif
    }

    [[nodiscard]] bool isShowing() const {
        return WaitForSingleObject(closedEvent, 0) == WAIT_TIMEOUT;
    }

    INT_PTR handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM /*lParam*/) override {
        log.note("dialog", message, wParam);
        if (message == WM_INITDIALOG) return onInit(window), 0;
        if (message == WM_COMMAND) return onCommand(window, LOWORD(wParam)), 1;
        return 0;
    }

    Log log;
    Page page{log};
    std::function<void(HWND)> onInit = [this](HWND window) {
        CreatePage(*this, window, SETTINGS_PAGE_ID, page);
    };
    std::function<void(HWND, WORD)> onCommand = [this](HWND window, WORD) { close(window, 7); };
};

TEST(DialogFramework, MessagesComeInOrderAndThePageGoesWithItsControls) {
    test::User user;
    TestDialog dialog(user.mainWindow());
    const auto seen =
        user.work({STORE_BUTTON_ID, GROUP_CHECKBOX_ID, test::kEscape}, [&] { dialog.showModal(); });
    ASSERT_TRUE(seen);
    EXPECT_EQ(seen->caption, "option");
    EXPECT_EQ(seen->controls.size(), 5U);
    EXPECT_EQ(dialog.log.messages,
              (Messages{"dialog init", "page init", "page command 1010", "page command 1011",
                        "dialog command 2", "dialog destroy", "page destroy"}));
    EXPECT_TRUE(dialog.page.checkboxAtEnd);
}

TEST(DialogFramework, GoesFromIdleOverShowingToClosed) {
    test::User user;
    TestDialog dialog(user.mainWindow());
    EXPECT_FALSE(dialog.isShowing());
    EXPECT_EQ(dialog.result, -1);
    dialog.onCommand = [&](HWND window, WORD) {
        EXPECT_TRUE(dialog.isShowing());
        dialog.showModal();  // showing already: a second dialog would find nobody to end it
        EXPECT_EQ(dialog.close(nullptr, 3), 0) << "no dialog to end";
        EXPECT_TRUE(dialog.isShowing());
        EXPECT_EQ(dialog.result, -1);
        EXPECT_NE(dialog.close(window, 0), 0);
    };
    EXPECT_TRUE(user.work({OK_BUTTON_ID}, [&] { dialog.showModal(); }));
    EXPECT_FALSE(dialog.isShowing());
    EXPECT_EQ(dialog.result, 0);
}

TEST(DialogFramework, EndedAtInitialisationItNeedsNoUser) {
    test::User user;
    TestDialog dialog(user.mainWindow());
    dialog.onInit = [&](HWND window) { dialog.close(window, 5); };
    user.work({}, [&] { dialog.showModal(); });
    EXPECT_EQ(dialog.result, 5);
}

TEST(DialogFramework, WithoutTemplateNothingHappens) {
    test::User user;
    TestDialog dialog(user.mainWindow());
    dialog.templateId = MAKEINTRESOURCEA(102);
    EXPECT_FALSE(user.work({}, [&] { dialog.showModal(); }));
    EXPECT_EQ(dialog.result, -1);
    EXPECT_TRUE(dialog.log.messages.empty());
}

TEST(DialogProcedure, AnswersNothingForNoWindowAndBeforeInitialisation) {
    EXPECT_EQ(DialogProc(nullptr, WM_COMMAND, 0, 0), 0);

    // A procedure that sees every message first: the font comes before the dialog is bound to its
    // object.
    static Log log;
    static std::vector<INT_PTR> answers;
    const DLGPROC procedure = [](HWND window, UINT message, WPARAM wParam,
                                 LPARAM lParam) -> INT_PTR {
        log.note("window", message, wParam);
        answers.push_back(DialogProc(window, message, wParam, lParam));
        return answers.back();
    };
    test::User user;
    TestDialog dialog(user.mainWindow());
    user.work({test::kEscape}, [&] {
        DialogBoxParamA(dialog.instance, dialog.templateId, dialog.parent, procedure,
                        reinterpret_cast<LPARAM>(static_cast<Dialog*>(&dialog)));
    });
    ASSERT_GE(log.messages.size(), 2U);
    EXPECT_EQ(log.messages[0], "window font");
    EXPECT_EQ(log.messages[1], "window init");
    EXPECT_EQ(answers.front(), 0);
    EXPECT_EQ(dialog.log.messages.front(), "dialog init");
}

}  // namespace
