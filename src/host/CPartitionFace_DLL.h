#pragma once

// Faces between this partition and its neighbours. Implemented by the host, borrowed by the
// library. All arrays are 1-based by interface face; the host may answer with another array at
// each call, so the library asks anew at each access.
class CPartitionFace_DLL {
  public:
    virtual ~CPartitionFace_DLL() = default;

    virtual int NParInterFace() = 0;  // number of interface faces
    virtual int* ijParCV() = 0;       // own cell beside the face
    virtual int* ijPar() = 0;         // halo slot that stands for the neighbour's cell

    // Area vector, pointing out of the own cell, in squared length units of the mesh.
    virtual double* ijParSx() = 0;
    virtual double* ijParSy() = 0;
    virtual double* ijParSz() = 0;

    // Face centre.
    virtual double* ijParxc() = 0;
    virtual double* ijParyc() = 0;
    virtual double* ijParzc() = 0;

    virtual double* ParInterFace_Lamda() = 0;  // interpolation weight of the neighbour side
};
