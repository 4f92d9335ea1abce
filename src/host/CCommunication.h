#pragma once

// Halo exchange of the host. Implemented by the host, borrowed by the library.
class CCommunication {
  public:
    virtual ~CCommunication() = default;

    // Refreshes the halo slots of a cell array (1-based, all cell slots) with the values of the
    // neighbouring partitions' own cells. Collective: every process makes the same sequence of
    // calls.
    virtual void DDM_Exch(double* cellArray) = 0;
};
