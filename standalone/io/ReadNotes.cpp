#include "ReadNotes.h"

#include <vtkDataArray.h>
#include <vtkDataSet.h>
#include <vtkFieldData.h>
#include <vtkStringArray.h>

namespace weldline {
namespace {

vtkStringArray* textsOf(vtkFieldData* data, const char* name) {
    return vtkStringArray::SafeDownCast(data->GetAbstractArray(name));
}

// A file may have been changed by anybody: each number is looked at.
PatchPlaces patchesOf(vtkFieldData* data) {
    vtkStringArray* names = textsOf(data, "PatchNames");
    vtkDataArray* patches = data->GetArray("PatchOfFace");
    vtkDataArray* centres = data->GetArray("PatchFaceCentres");
    if (names == nullptr || patches == nullptr || centres == nullptr ||
        centres->GetNumberOfComponents() != 3 || patches->GetNumberOfComponents() != 1 ||
        centres->GetNumberOfTuples() != patches->GetNumberOfTuples()) {
        return {};
    }
    PatchPlaces places;
    for (vtkIdType n = 0; n < names->GetNumberOfValues(); ++n) {
        places.names.push_back(names->GetValue(n));
    }
    for (vtkIdType f = 0; f < patches->GetNumberOfTuples(); ++f) {
        const double patch = patches->GetComponent(f, 0);
        if (!(patch >= 0.0 && patch < static_cast<double>(places.names.size()))) {
            return {};
        }
        places.patchOfFace.push_back(static_cast<int>(patch));
        places.faceCentres.push_back({centres->GetComponent(f, 0), centres->GetComponent(f, 1),
                                      centres->GetComponent(f, 2)});
    }
    return places;
}

}  // namespace

ResultNotes notesOf(vtkDataSet* grid) {
    vtkFieldData* data = grid->GetFieldData();
    vtkStringArray* run = data == nullptr ? nullptr : textsOf(data, "WeldLineRun");
    if (run == nullptr || run->GetNumberOfValues() != 1) {
        return {};
    }
    return {patchesOf(data), run->GetValue(0)};
}

}  // namespace weldline
