// Access to the host's function suites for the length of one command.
#pragma once

#include <array>
#include <cstddef>

#include "sdk/effect_api.h"

/// Where the host keeps a suite record: its name and version on the wire, and the handler's slot for it.
template <typename Suite>
struct SuiteKey;

template <>
struct SuiteKey<PF_HandleSuite1> {
    static constexpr std::size_t slot = 0;
    static constexpr const char* name = kPFHandleSuite;
    static constexpr A_long version = kPFHandleSuiteVersion1;
};
template <>
struct SuiteKey<PF_ANSICallbacksSuite1> {
    static constexpr std::size_t slot = 1;
    static constexpr const char* name = kPFANSISuite;
    static constexpr A_long version = kPFANSISuiteVersion1;
};
template <>
struct SuiteKey<PF_WorldSuite1> {
    static constexpr std::size_t slot = 2;
    static constexpr const char* name = kPFWorldSuite;
    static constexpr A_long version = kPFWorldSuiteVersion1;
};
template <>
struct SuiteKey<PF_WorldTransformSuite1> {
    static constexpr std::size_t slot = 3;
    static constexpr const char* name = kPFWorldTransformSuite;
    static constexpr A_long version = kPFWorldTransformSuiteVersion1;
};
template <>
struct SuiteKey<PF_ParamUtilsSuite1> {
    static constexpr std::size_t slot = 4;
    static constexpr const char* name = kPFParamUtilsSuite;
    static constexpr A_long version = kPFParamUtilsSuiteVersion1;
};
template <>
struct SuiteKey<PFAppSuite4> {
    static constexpr std::size_t slot = 5;
    static constexpr const char* name = kPFAppSuite;
    static constexpr A_long version = kPFAppSuiteVersion4;
};

/// Acquires suites on demand and releases them all when it goes, also when an error is thrown past it.
/// Lives on the stack of one handler; neither copied nor shared between threads.
class SuiteHandler {
  public:
    /// Throws PF_Err_BAD_CALLBACK_PARAM when `basicSuite` is null.
    explicit SuiteHandler(SPBasicSuite* basicSuite);
    ~SuiteHandler();
    SuiteHandler(const SuiteHandler&) = delete;
    SuiteHandler& operator=(const SuiteHandler&) = delete;

    /// The suite, acquired at the first request. Throws PF_Err_BAD_CALLBACK_PARAM when the host does not give it.
    template <typename Suite>
    [[nodiscard]] const Suite& get() {
        using Key = SuiteKey<Suite>;
        return *static_cast<const Suite*>(acquire(Key::slot, Key::name, Key::version));
    }

  private:
    struct Slot {
        const void* suite = nullptr;
        const char* name = nullptr;
        A_long version = 0;
    };

    const void* acquire(std::size_t slot, const char* name, A_long version);

    SPBasicSuite* basicSuite_;
    std::array<Slot, 6> slots_;
};
