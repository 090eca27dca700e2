#include "kernel/forms.h"

#ifdef NEVREL_X64
#include "kernel/x64/x64_forms.h"
#endif

namespace {

constinit const Forms plainForms{"plain", FindWindowsWith<PlainVectors>, {}};

constinit const Forms* const forms[] = {
    &plainForms,
#ifdef NEVREL_X64
    &sse2Forms,
    &avx2Forms,
    &avx512Forms,
#endif
};

}  // namespace

std::span<const Forms* const> UsableForms() noexcept {
#ifdef NEVREL_X64
    return std::span(forms).first(1 + UsableX64Sets());
#else
    return forms;
#endif
}
