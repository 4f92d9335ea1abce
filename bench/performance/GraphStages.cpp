#include <memory>
#include <numeric>

#include "CalculationStages.h"

namespace weldline::performance {

namespace {

constexpr int kProducts = 20;
constexpr std::size_t kTriadElements = 20'000'000;

// Rows of the own cells: per face both cells, the own value on the diagonal. Boundary faces, which
// bring the own value back, belong to the diagonal.
struct Matrix {
    std::vector<int> rows{0};
    std::vector<int> columns;
    std::vector<double> values;

    // A product reads the matrix and x and writes y, each once.
    double bytes() const {
        return static_cast<double>(sizeof(int) * (rows.size() + columns.size()) +
                                   sizeof(double) * (values.size() + 2 * rows.size()));
    }

    void multiply(const double* x, double* y) const {
        const std::size_t count = rows.size() - 1;
        for (std::size_t r = 0; r < count; ++r) {
            double sum = 0.0;
            for (int i = rows[r]; i < rows[r + 1]; ++i) sum += values[i] * x[columns[i]];
            y[r] = sum;
        }
    }
};

struct Entry {
    int column;
    double value;
};

double areaOf(const double* face) {
    return std::sqrt((face[3] * face[3] + face[4] * face[4]) + face[5] * face[5]);
}

Matrix smoothingMatrix(BoundCase& bound) {
    const CKVR3DFiniteVolumeMesh& mesh = bound.model().mesh();
    const float* time = bound.model().globalVariables().m_pFlowVariable;
    std::vector<std::vector<Entry>> entries(static_cast<std::size_t>(mesh.m_nCV));
    for (int c = 0; c < mesh.m_nCV; ++c) entries[c].push_back({c, 0.0});
    for (int f = 1; f <= mesh.m_nInnerFace; ++f) {
        const double* face = mesh.m_ppInnerFace[f];
        const int a = static_cast<int>(face[1]) - 1;
        const int b = static_cast<int>(face[2]) - 1;
        if (time[a + 1] < 1e-30F || time[b + 1] < 1e-30F) continue;
        const double area = areaOf(face);
        const double second = mesh.m_pInnerFaceLambda[f] * area;
        entries[a].front().value += area - second;
        entries[b].front().value += second;
        entries[a].push_back({b, second});
        entries[b].push_back({a, area - second});
    }
    Matrix matrix;
    for (const std::vector<Entry>& row : entries) {
        double weight = 1e-30;
        for (const Entry& entry : row) weight += entry.value;
        for (const Entry& entry : row) {
            matrix.columns.push_back(entry.column);
            matrix.values.push_back(entry.value / weight);
        }
        matrix.rows.push_back(static_cast<int>(matrix.columns.size()));
    }
    return matrix;
}

struct Product {
    Matrix matrix;
    std::vector<double> x, y;
};

struct Triad {
    std::vector<double> a, b, c;
};

}  // namespace

Stages graphStages(BoundCase& bound) {
    const auto product = std::make_shared<Product>();
    const auto triad = std::make_shared<Triad>();
    Stages stages;
    const auto prepareProduct = [product, &bound] {
        if (product->x.empty()) product->matrix = smoothingMatrix(bound);
        product->x.resize(product->matrix.rows.size() - 1);
        std::iota(product->x.begin(), product->x.end(), 1.0);
        product->y = product->x;
    };
    const auto multiply = [product] {
        for (int i = 0; i < kProducts; ++i) {
            product->matrix.multiply(product->x.data(), product->y.data());
            product->x.swap(product->y);
        }
    };
    stages.push_back({"smoothing pass/csr", prepareProduct, multiply, kProducts,
                      [product] { return product->matrix.bytes(); }});

    const auto prepareTriad = [triad] {
        for (std::vector<double>* array : {&triad->a, &triad->b, &triad->c})
            array->assign(kTriadElements, 1.0);
    };
    const auto run = [triad] {
        double* a = triad->a.data();
        const double* b = triad->b.data();
        const double* c = triad->c.data();
        for (std::size_t i = 0; i < kTriadElements; ++i) a[i] = b[i] + 3.0 * c[i];
    };
    stages.push_back({"triad per million/triad", prepareTriad, run, kTriadElements / 1e6,
                      [] { return 3.0 * sizeof(double) * 1e6; }});
    return stages;
}

}  // namespace weldline::performance
