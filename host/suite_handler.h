// Access to the host's function suites for the length of one command.
#pragma once

#include <array>
#include <cstddef>

#include "sdk/effect_api.h"

inline constexpr std::size_t suiteCount = 7;

/// Where a suite is found: its name and version on the wire, and the handler's slot for it.
struct SuiteKey {
    std::size_t slot;
    const char* name;
    A_long version;
};

/// The key of a suite by its record. Two versions of one suite are two records and two keys.
template <typename Suite>
inline constexpr SuiteKey suiteKey{suiteCount, "", 0};
template <>
inline constexpr SuiteKey suiteKey<PF_HandleSuite1>{0, kPFHandleSuite, kPFHandleSuiteVersion1};
template <>
inline constexpr SuiteKey suiteKey<PF_ANSICallbacksSuite1>{1, kPFANSISuite, kPFANSISuiteVersion1};
template <>
inline constexpr SuiteKey suiteKey<PF_WorldSuite1>{2, kPFWorldSuite, kPFWorldSuiteVersion1};
template <>
inline constexpr SuiteKey suiteKey<PF_WorldSuite2>{3, kPFWorldSuite, kPFWorldSuiteVersion2};
template <>
inline constexpr SuiteKey suiteKey<PF_WorldTransformSuite1>{4, kPFWorldTransformSuite,
                                                            kPFWorldTransformSuiteVersion1};
template <>
inline constexpr SuiteKey suiteKey<PF_ParamUtilsSuite1>{5, kPFParamUtilsSuite,
                                                        kPFParamUtilsSuiteVersion1};
template <>
inline constexpr SuiteKey suiteKey<PFAppSuite4>{6, kPFAppSuite, kPFAppSuiteVersion4};

/// Acquires suites on demand and releases them all when it goes, also when an error is thrown past
/// it. Lives on the stack of one handler; neither copied nor shared between threads.
class SuiteHandler {
  public:
    /// Throws PF_Err_BAD_CALLBACK_PARAM when `basicSuite` is null.
    explicit SuiteHandler(SPBasicSuite* basicSuite);
    ~SuiteHandler();
    SuiteHandler(const SuiteHandler&) = delete;
    SuiteHandler& operator=(const SuiteHandler&) = delete;

    /// The suite, acquired at the first request. Throws PF_Err_BAD_CALLBACK_PARAM when the host
    /// does not give it.
    template <typename Suite>
    [[nodiscard]] const Suite& get() {
        static_assert(suiteKey<Suite>.slot < suiteCount, "not a suite that the handler knows");
        return *static_cast<const Suite*>(acquire(suiteKey<Suite>));
    }

  private:
    struct Slot {
        const void* suite = nullptr;
        const SuiteKey* key = nullptr;
    };

    const void* acquire(const SuiteKey& key);

    SPBasicSuite* basicSuite_;
    std::array<Slot, suiteCount> slots_;
};
