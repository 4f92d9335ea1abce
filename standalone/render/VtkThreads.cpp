#include "VtkThreads.h"

#include <vtkSMPTools.h>

namespace weldline {

void keepVtkInOneThread() {
    vtkSMPTools::SetBackend("Sequential");
}

}  // namespace weldline
