#pragma once

// Collective operations of the host. Implemented by the host, borrowed by the library.
class CKVRCom {
  public:
    virtual ~CKVRCom() = default;

    // Maximum of one integer over all processes, returned to every process. Collective.
    virtual int AllMax(int& value) = 0;
};
