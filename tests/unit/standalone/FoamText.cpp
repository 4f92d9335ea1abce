#include "FoamText.h"

#include "MeshParts.h"

namespace weldline::test {
namespace {

std::string header(const std::string& type, const std::string& object) {
    return "FoamFile\n{\n version 2.0;\n format ascii;\n class " + type + ";\n object " + object +
           ";\n}\n";
}

}  // namespace

void putFoamMesh(const PutFile& put, double start) {
    std::string points = header("vectorField", "points") + "12\n(\n";
    for (const Vec3 p : boxRowPoints({0, 1, 2})) {
        points += "(" + std::to_string(start + p.x) + " " + std::to_string(p.y) + " " +
                  std::to_string(p.z) + ")\n";
    }
    put("constant/polyMesh/points", points + ")\n");
    put("constant/polyMesh/faces",
        header("faceList", "faces") +
            "11\n(\n4(4 5 7 6)\n4(0 2 3 1)\n4(8 9 11 10)\n4(0 4 6 2)\n4(1 3 7 5)\n4(0 1 5 4)\n"
            "4(2 6 7 3)\n4(4 8 10 6)\n4(5 7 11 9)\n4(4 5 9 8)\n4(6 10 11 7)\n)\n");
    put("constant/polyMesh/owner",
        header("labelList", "owner") + "11\n(\n0\n0\n1\n0\n0\n0\n0\n1\n1\n1\n1\n)\n");
    put("constant/polyMesh/neighbour", header("labelList", "neighbour") + "1\n(\n1\n)\n");
    put("constant/polyMesh/boundary",
        header("polyBoundaryMesh", "boundary") +
            "3\n(\ngate\n{\n type patch;\n nFaces 1;\n startFace 1;\n}\n"
            "vent\n{\n type patch;\n nFaces 1;\n startFace 2;\n}\n"
            "walls\n{\n type wall;\n nFaces 8;\n startFace 3;\n}\n)\n");
}

void putFoamControl(const PutFile& put) {
    put("system/controlDict", header("dictionary", "controlDict") +
                                  "startFrom startTime; startTime 0; endTime 2; deltaT 1;\n"
                                  "writeControl timeStep; writeInterval 1;\n");
}

std::string foamField(const std::string& name, const std::string& values) {
    return header("volScalarField", name) +
           "dimensions [0 0 1 0 0 0 0];\ninternalField nonuniform List<scalar>\n2\n(\n" + values +
           "\n)\n;\nboundaryField\n{\n gate { type zeroGradient; }\n vent { type zeroGradient; }\n "
           "walls { type zeroGradient; }\n}\n";
}

}  // namespace weldline::test
