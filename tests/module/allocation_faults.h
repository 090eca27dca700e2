// Which memory allocations of a module fail: the export of a module that is built with
// faulty_new.cpp.
#pragma once

/// Counts and fails are the module's own allocations alone, not its host's.
struct AllocationFaults {
    int count = 0;  ///< allocations so far
    int nth = 0;    ///< the one that fails, from 1; 0 for none
    bool fromThereOn = false;
};

inline constexpr char allocationFaultsName[] = "allocationFaults";
