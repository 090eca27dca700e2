// The options dialog of a module that has lost its templates, or the page's.
#include "resources/dialogs.h"
#include "tests/module/session.h"
#include "tests/ui/user.h"

using namespace host_kit;

namespace {

/// A copy of the module that has lost its resources, all but one template where `kept` is not 0.
std::filesystem::path DamagedModule(WORD kept, const Session& session) {
    const std::filesystem::path path = session.folder.path() / "damaged.aex";
    std::filesystem::copy_file(session.module.path(), path);
    HANDLE update = BeginUpdateResourceA(path.string().c_str(), TRUE);
    if (kept != 0) {
        HMODULE whole = GetModuleHandleA(session.module.path().string().c_str());
        HRSRC source = FindResourceA(whole, MAKEINTRESOURCEA(kept), RT_DIALOG);
        EXPECT_TRUE(UpdateResourceA(update, RT_DIALOG, MAKEINTRESOURCEA(kept), 1041,
                                    LockResource(LoadResource(whole, source)),
                                    SizeofResource(whole, source)));
    }
    EXPECT_TRUE(EndUpdateResourceA(update, FALSE));
    return path;
}

class MissingTemplate : public testing::TestWithParam<WORD> {};

TEST_P(MissingTemplate, EndsTheCommandAtOnceAndWritesNothing) {
    test::User user;
    Session session;
    const Module damaged(DamagedModule(GetParam(), session));
    session.host.identity.pluginPath = damaged.path().string();
    session.host.identity.mainWindow = user.mainWindow();
    Effect effect(session.host, damaged.entryPoint());
    ASSERT_TRUE(effect.globalSetup().ok());
    ASSERT_TRUE(effect.paramsSetup().ok());
    const auto has = [&](WORD id) {
        HMODULE module = GetModuleHandleA(damaged.path().string().c_str());
        return FindResourceA(module, MAKEINTRESOURCEA(id), RT_DIALOG) != nullptr;
    };
    ASSERT_EQ(has(OPTION_DIALOG_ID), GetParam() == OPTION_DIALOG_ID);
    ASSERT_FALSE(has(SETTINGS_PAGE_ID));
    Instance instance(effect);
    instance.setSlider(kThreshold, 42);
    user.work({}, [&] { EXPECT_TRUE(instance.doDialog().ok()); });
    EXPECT_FALSE(std::filesystem::exists(session.folder.file("damaged.ini")));
}

INSTANTIATE_TEST_SUITE_P(OptionsDialog, MissingTemplate, testing::Values(0, OPTION_DIALOG_ID));

}  // namespace
