#pragma once

#include "WriteResult.h"

class vtkDataSet;

namespace weldline {

// What a grid tells of the run that it is the result of; empty where it is not whole.
ResultNotes notesOf(vtkDataSet* grid);

}  // namespace weldline
