// How much of a long series of a gmsh file is in memory. Not part of sanitizer builds, whose memory
// nothing else counts.
#include <malloc.h>

#include <algorithm>

#include "IoFiles.h"
#include "IoSeries.h"

namespace weldline::test {
namespace {

class GmshMemory : public FileTest {
  protected:
    static constexpr int cells = 4000;

    template <class Number>
    static void add(std::string& text, Number number, bool isBinary) {
        if (isBinary)
            text.append(reinterpret_cast<const char*>(&number), sizeof number);
        else
            text += std::to_string(number) + " ";
    }

    // Tetrahedra beside each other, and their phase fraction.
    std::string series(int steps, bool isBinary) const {
        std::string text = std::string("$MeshFormat\n2.2 ") + (isBinary ? "1 8\n" : "0 8\n");
        if (isBinary) add(text, 1, true);
        text += "$EndMeshFormat\n$Nodes\n" + std::to_string(4 * cells) + "\n";
        for (int node = 0; node < 4 * cells; ++node) {
            add(text, node + 1, isBinary);
            const int corner = node % 4;
            add(text, 2.0 * (node / 4) + (corner == 1 ? 1.0 : 0.0), isBinary);
            add(text, corner == 2 ? 1.0 : 0.0, isBinary);
            add(text, corner == 3 ? 1.0 : 0.0, isBinary);
        }
        text += "$EndNodes\n$Elements\n" + std::to_string(cells) + "\n";
        for (int cell = 0; cell < cells; ++cell) {
            if (!isBinary) add(text, cell + 1, false);
            add(text, 4, isBinary);
            if (isBinary) add(text, 1, true);  // element behind this head
            add(text, 0, isBinary);
            if (isBinary) add(text, cell + 1, true);
            for (int corner = 1; corner <= 4; ++corner) add(text, 4 * cell + corner, isBinary);
        }
        text += "$EndElements\n";
        for (int step = 0; step < steps; ++step) {
            text += "$ElementData\n1\n\"alpha\"\n1\n" + std::to_string(step) + "\n3\n0\n1\n" +
                    std::to_string(cells) + "\n";
            for (int cell = 0; cell < cells; ++cell) {
                add(text, cell + 1, isBinary);
                add(text, cell * steps < cells * (step + 1) ? 1.0 : 0.0, isBinary);
            }
            text += "\n$EndElementData\n";
        }
        return text;
    }

    // Bytes, while the steps are gone through, above those before.
    static std::size_t mostInUse(const std::string& file, int steps) {
        const auto inUse = [] {
            const struct mallinfo2 all = mallinfo2();
            return all.uordblks + all.hblkhd;
        };
        const std::size_t before = inUse();
        std::size_t most = 0;
        int told = 0;
        ReadOptions options = fromSeries();
        options.series.progress = [&](const std::string&) {
            most = std::max(most, inUse());
            ++told;
        };
        const DataSet data = readDataSet(file, options);
        EXPECT_EQ(data.series->steps, steps);
        EXPECT_EQ(told, steps);
        return most - before;
    }
};

// Thirty steps of the file's numbers alone would be 960 kB.
TEST_F(GmshMemory, of_thirty_more_steps_is_the_same) {
    for (const bool isBinary : {false, true}) {
        SCOPED_TRACE(isBinary);
        const std::string few = put("few.msh", series(3, isBinary));
        const std::string many = put("many.msh", series(33, isBinary));
        mostInUse(few, 3);  // what VTK keeps for later runs
        const std::size_t atFew = mostInUse(few, 3);
        EXPECT_GT(atFew, cells * 8);
        EXPECT_LT(mostInUse(many, 33), atFew + cells * 8);
    }
}

}  // namespace
}  // namespace weldline::test
