// Finding a cell by tag or title in a button matrix (Matrix::cellWithTag, BVNSMatrix::cellWithTitle)
// beside a plain loop over the same buttons, in the same run; the wanted cell is the last one, so the
// whole grid is walked. Sizes 1,000 and 10,000 cells show that the search is linear.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <cstdlib>
#include <map>
#include <memory>

#include "BrevantCocoaExtensions/interface/BVNSMatrix.hpp"

namespace {

// One matrix per size, rows of 100 cells titled "Cell N" after their tags.
bv::Matrix& matrixOf(int cells) {
    static std::map<int, std::unique_ptr<bv::Matrix>> matrices;
    auto& matrix = matrices[cells];
    if (!matrix) {
        matrix = std::make_unique<bv::Matrix>(cells / 100, 100, bv::Matrix::Mode::List);
        for (bv::MatrixCell* cell : matrix->cells())
            cell->setText(QStringLiteral("Cell %1").arg(cell->tag()));
    }
    return *matrix;
}

// The peer's data: the same buttons with their tags beside them.
std::vector<std::pair<QPushButton*, int>> buttonsOf(const bv::Matrix& matrix) {
    std::vector<std::pair<QPushButton*, int>> buttons;
    for (bv::MatrixCell* cell : matrix.cells())
        buttons.emplace_back(cell, cell->tag());
    return buttons;
}

void LibraryCellWithTag(benchmark::State& state) {
    const bv::Matrix& matrix = matrixOf(static_cast<int>(state.range(0)));
    const int last = static_cast<int>(state.range(0)) - 1;
    for (auto _ : state)
        benchmark::DoNotOptimize(matrix.cellWithTag(last));
    state.SetComplexityN(state.range(0));
}

void PlainLoopTag(benchmark::State& state) {
    const auto buttons = buttonsOf(matrixOf(static_cast<int>(state.range(0))));
    const int last = static_cast<int>(state.range(0)) - 1;
    for (auto _ : state) {
        QPushButton* found = nullptr;
        for (const auto& [button, tag] : buttons) {
            if (tag == last) {
                found = button;
                break;
            }
        }
        benchmark::DoNotOptimize(found);
    }
    state.SetComplexityN(state.range(0));
}

void LibraryCellWithTitle(benchmark::State& state) {
    const bv::Matrix& matrix = matrixOf(static_cast<int>(state.range(0)));
    const bv::Text title("Cell " + std::to_string(state.range(0) - 1));
    for (auto _ : state)
        benchmark::DoNotOptimize(bv::BVNSMatrix::cellWithTitle(matrix, title));
    state.SetComplexityN(state.range(0));
}

void PlainLoopTitle(benchmark::State& state) {
    const auto buttons = buttonsOf(matrixOf(static_cast<int>(state.range(0))));
    const QString title = QStringLiteral("Cell %1").arg(state.range(0) - 1);
    for (auto _ : state) {
        QPushButton* found = nullptr;
        for (const auto& entry : buttons) {
            if (entry.first->text() == title) {
                found = entry.first;
                break;
            }
        }
        benchmark::DoNotOptimize(found);
    }
    state.SetComplexityN(state.range(0));
}

}  // namespace

BENCHMARK(LibraryCellWithTag)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN)->UseRealTime();
BENCHMARK(PlainLoopTag)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN)->UseRealTime();
BENCHMARK(LibraryCellWithTitle)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN)->UseRealTime();
BENCHMARK(PlainLoopTitle)->Arg(1000)->Arg(10000)->Complexity(benchmark::oN)->UseRealTime();

int main(int argc, char** argv) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
