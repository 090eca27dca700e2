// How the caller of a long pass is told how far it is, and stops it.
#pragma once

/// Asked between bands of rows. Without `goOn` the pass is never interrupted.
struct Progress {
    static constexpr int band = 32;  ///< rows from one call to the next, at least

    bool (*goOn)(void* context, int rowsDone) = nullptr;  ///< false ends the pass; must not throw
    void* context = nullptr;
};
