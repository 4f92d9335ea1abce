// Writes what a vectorised script needs to do the calculation itself, and the library's angles to
// check it against: one file per array, 0-based, raw numbers, the type in the file's name.

#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "ReadChoice.h"
#include "base/Errors.h"
#include "bind/Analysis.h"
#include "bind/HostModel.h"

using namespace weldline;
using namespace weldline::performance;

namespace {

class Folder {
  public:
    explicit Folder(std::string path) : m_path(std::move(path)) {}

    template <class Value>
    void write(const std::string& name, const std::vector<Value>& values) const {
        std::ofstream file(m_path + "/" + name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(values.data()),
                   static_cast<std::streamsize>(values.size() * sizeof(Value)));
        file.close();
        if (!file) throw RunError(m_path + "/" + name + " cannot be written");
    }

  private:
    std::string m_path;
};

void writeMesh(const Folder& folder, const FvMesh& mesh, const Filling& filling) {
    folder.write("owner.int32", mesh.owner);
    folder.write("neighbour.int32", mesh.neighbour);
    folder.write("lambda.float64", mesh.lambda);
    folder.write("face_area.float64", mesh.faceArea);
    folder.write("face_centre.float64", mesh.faceCentre);
    folder.write("face_node_offsets.int64", mesh.faceNodes.offsets);
    folder.write("face_nodes.int32", mesh.faceNodes.entries);
    folder.write("cell_node_offsets.int64", mesh.cellNodes.offsets);
    folder.write("cell_nodes.int32", mesh.cellNodes.entries);
    folder.write("cell_centre.float64", mesh.cellCentre);
    folder.write("cell_volume.float64", mesh.cellVolume);
    folder.write("boundary_kind.uint8", filling.groups.kinds);
    folder.write("fill_time.float32", filling.fillTime);
}

std::vector<double> anglesOf(const FvMesh& mesh, const Filling& filling) {
    HostOptions options;
    options.controlFile = WELDLINE_CONTROL_FILE;
    HostModel model(mesh, filling.groups, filling.fillTime, options);
    return runWeldLine(model);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc < 2) throw UsageError("the folder is missing");
        const MeshChoice choice = readChoice(argc - 2, argv + 2);
        FvMesh mesh = buildFvMesh(boxCells(choice));
        if (choice.shuffled) shuffleInnerFaces(mesh);
        const Filling filling = fill(mesh, choice.edge);
        const Folder folder(argv[1]);
        writeMesh(folder, mesh, filling);
        folder.write("angles.float64", anglesOf(mesh, filling));
        return 0;
    } catch (const UsageError& error) {
        std::cerr << error.what() << "\nusage: weldline_write_arrays FOLDER [MESH]\n"
                  << kChoiceUsage;
        return 2;
    } catch (const RunError& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}
