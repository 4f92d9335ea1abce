#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "partition/MeshPart.h"

namespace weldline::test {

// A filling result in every form that the program reads, written as text without any library. The
// whole is given with its fill time as first cell field and named patches.
class InputForms {
  public:
    // `partOfCell` says which piece a cell goes to, in forms that have pieces; borrowed. All files
    // go into `folder`, which exists.
    InputForms(std::filesystem::path folder, const MeshPart& whole,
               const std::vector<int>& partOfCell, int pieces);

    // Each writes its files and answers the name of the one to read.
    std::string vtu() const;         // patches numbered 1, 2, ... on quads and triangles
    std::string pvtu() const;        // all of them in one more piece, wherever their cells are
    std::string pvtuGhosts() const;  // every piece also has a cell of the next one, as a ghost
    std::string vtm() const;         // pieces, then a surface block per patch
    std::string foam() const;
    std::string decomposedFoam() const;

    // All of them: whole.vtu, pieces.pvtu, ghosts.pvtu, blocks.vtm, case/case.foam and
    // decomposed/decomposed.foam.
    void all() const;

  private:
    std::string put(const std::filesystem::path& name, const std::string& text) const;
    std::string listPieces(const std::string& name, const std::vector<std::string>& texts) const;
    std::vector<MeshPart> parts() const;
    void putCase(const std::filesystem::path& folder, const MeshPart& part) const;

    std::filesystem::path m_folder;
    const MeshPart& m_whole;
    const std::vector<int>& m_partOfCell;
    int m_pieces;
};

}  // namespace weldline::test
