#include "params/string_table.h"

#include "params/ui_language.h"
#include "resources/version.h"
#include "windows_stand_in/windows_api.h"

namespace {

struct StringRecord {
    TextId id;
    const char* text;     ///< Japanese, or the only text
    const char* english;  ///< null when there is only one text
};

// The Japanese texts are written as code page 932 bytes, so that the source file's encoding does
// not matter.
constexpr StringRecord stringTable[] = {
    {TextId::EffectName, "nevrel", nullptr},
    {TextId::Copyright, NEVREL_COPYRIGHT, nullptr},
    {TextId::ColorThreshold, "color threshold", nullptr},
    {TextId::Softness, "softness", nullptr},
    {TextId::ColorKeyEnable, "color key enable", nullptr},
    {TextId::ColorKeyEnableLabel, "", nullptr},
    {TextId::KeyColor, "key color", nullptr},
    {TextId::ColorKeyGroup, "color key", nullptr},
    {TextId::KeyThreshold, "key color threshold", nullptr},
    {TextId::KeyInvert, "invert", nullptr},
    {TextId::KeyInvertLabel, "", nullptr},
    {TextId::Bias, "bias", nullptr},
    // 設定 （次回起動から有効になります）
    {TextId::Settings,
     "\x90\xDD\x92\xE8\x20\x81\x69\x8E\x9F\x89\xF1\x8B\x4E\x93\xAE\x82\xA9\x82\xE7\x97\x4C\x8C\xF8"
     "\x82"
     "\xC9\x82\xC8\x82\xE8\x82\xDC\x82\xB7\x81\x6A",
     "Settings (Valid from next start-up)"},
    // カラーキー関連のパラメータを階層化する
    {TextId::GroupParameters,
     "\x83\x4A\x83\x89\x81\x5B\x83\x4C\x81\x5B\x8A\xD6\x98\x41\x82\xCC\x83\x70\x83\x89\x83\x81\x81"
     "\x5B"
     "\x83\x5E\x82\xF0\x8A\x4B\x91\x77\x89\xBB\x82\xB7\x82\xE9",
     "Group color key parameters"},
    // 現在のパラメータ設定をデフォルト値として記憶する
    {TextId::StoreDefaults,
     "\x8C\xBB\x8D\xDD\x82\xCC\x83\x70\x83\x89\x83\x81\x81\x5B\x83\x5E\x90\xDD\x92\xE8\x82\xF0\x83"
     "\x66"
     "\x83\x74\x83\x48\x83\x8B\x83\x67\x92\x6C\x82\xC6\x82\xB5\x82\xC4\x8B\x4C\x89\xAF\x82\xB7\x82"
     "\xE9",
     "Set current parameter values to default"},
    // パラメータのデフォルト値設定を初期状態に復帰する
    {TextId::RestoreDefaults,
     "\x83\x70\x83\x89\x83\x81\x81\x5B\x83\x5E\x82\xCC\x83\x66\x83\x74\x83\x48\x83\x8B\x83\x67\x92"
     "\x6C"
     "\x90\xDD\x92\xE8\x82\xF0\x8F\x89\x8A\xFA\x8F\xF3\x91\xD4\x82\xC9\x95\x9C\x8B\x41\x82\xB7\x82"
     "\xE9",
     "Restore initial default parameter values"},
};

bool IsJapanese() {
    const A_long language = UiLanguage();
    return language == languageJapanese || (language == 0 && _getmbcp() == 932);
}

}  // namespace

const char* LookupString(TextId id) {
    for (const StringRecord& record : stringTable) {
        if (record.id == id)
            return record.english == nullptr || IsJapanese() ? record.text : record.english;
    }
    return "-";
}
