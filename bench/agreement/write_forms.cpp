// write_forms CASE FOLDER PIECES: a filling result in every form of input that has pieces or may
// have, cut by METIS.

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>

#include "InputForms.h"
#include "comm/OneRank.h"
#include "io/DataSet.h"
#include "partition/CutMesh.h"

namespace {

void writeForms(const std::string& file, const std::filesystem::path& folder, int pieces) {
    weldline::OneRank alone;
    const weldline::MeshPart whole = weldline::readPart(alone, file, {}).part;
    const std::vector<int> partOfCell = weldline::cutMesh(whole.mesh, pieces);
    std::filesystem::create_directories(folder);
    weldline::test::InputForms(folder, whole, partOfCell, pieces).all();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::cerr << "write_forms: give a filling result, a folder and a number of pieces\n";
        return 2;
    }
    try {
        writeForms(argv[1], argv[2], std::atoi(argv[3]));
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "write_forms: " << error.what() << "\n";
        return 1;
    }
}
