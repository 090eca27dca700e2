// The options dialog in a terminal, over the module.
#include "command/terminal_dialog.h"

#include <sstream>

#include "tests/module/session.h"

using namespace host_kit;

namespace {

/// Opens the dialog with `typed` as the input; returns what it printed.
std::string Work(Session& session, const std::string& typed) {
    std::istringstream input(typed);
    std::ostringstream output;
    nevrel::TerminalDialog dialog(input, output);
    Window mainWindow;
    mainWindow.shower = &dialog;
    session.host.identity.mainWindow = &mainWindow;
    Instance instance(session.effect);
    instance.setSlider(kSoftness, 33);
    EXPECT_TRUE(instance.doDialog().ok());
    session.host.identity.mainWindow = nullptr;
    EXPECT_TRUE(dialog.hasShown());
    return output.str();
}

constexpr char kFirstView[] =
    "option\nSettings (Valid from next start-up)\n  1  [x] Group color key parameters\n"
    "  2  Set current parameter values to default\n  3  Restore initial default parameter values\n "
    " 4  "
    "OK\n> ";

TEST(TerminalDialog, ClicksWhatIsChosenAndAsksAgainForAnythingElse) {
    Session session;
    const std::string printed = Work(session, "\n0\n5\nOK\n 1 \r\n2\n4\n3\n");
    EXPECT_TRUE(
        printed.starts_with(std::string(kFirstView) + "Choose one of the numbers.\n> Choose"))
        << printed;
    EXPECT_NE(printed.find("1  [ ] Group"), std::string::npos);
    const std::string ini = ReadText(session.folder.file("nevrel.ini"));
    EXPECT_NE(ini.find("Softness=33"), std::string::npos) << "nothing is read after OK";
    EXPECT_NE(ini.find("ColorkeyGroup=0"), std::string::npos);
}

TEST(TerminalDialog, RefusesWhatIsNotAvailable) {
    Session session({}, HostNamed(PF_AppID_AfterEffects, {12, 0}));
    const std::string printed = Work(session, "2\n3\n");
    EXPECT_NE(printed.find("2  Set current parameter values to default (not available)"),
              std::string::npos);
    EXPECT_TRUE(
        printed.ends_with("> Choose one of the numbers.\n> Choose one of the numbers.\n> \n"))
        << printed;
    EXPECT_FALSE(std::filesystem::exists(session.folder.file("nevrel.ini")));
}

}  // namespace
