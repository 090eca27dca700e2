// The search for windows under the eyes of somebody who may end it.
#pragma once

#include "kernel/pass/progress.h"
#include "kernel/pass/windows.h"

/// Asks between bands of rows whether to go on, and finds no more if not. It stands in for the
/// search, so that the pass, where every instruction counts, knows nothing of it.
struct WatchedSearch {
    const Progress& progress;
    FindWindows* find;
    int due = Progress::band;
    bool ended = false;

    /// The search for a pass: the plain one where nobody watches.
    [[nodiscard]] FindWindows* asked() const {
        return progress.goOn == nullptr ? find : findWindows;
    }

  private:
    static void findWindows(const SearchedMap& map, int& x, int& y, Windows& windows) {
        WatchedSearch& self = *map.watch;
        if (y >= self.due) {
            self.due = y + Progress::band;
            self.ended = !self.progress.goOn(self.progress.context, y);
        }
        if (!self.ended) return self.find(map, x, y, windows);
        y = map.edges.height();
        windows.count = 0;
    }
};
