// WebAssembly's vectors have what SSE2 needs, and a page cannot ask for more.
#include "kernel/x64/x64_forms.h"

std::size_t UsableX64Sets() noexcept { return 1; }

// Never used.
constinit const Forms avx2Forms{};
constinit const Forms avx512Forms{};
