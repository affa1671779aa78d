#include "bench/Bench.h"

#include <QtGlobal>

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::AddCustomContext("compiler", HXBENCH_COMPILER);
    benchmark::AddCustomContext("qt", qVersion());
    benchmark::AddCustomContext("missing_contenders", HXBENCH_MISSING);
    hxbench::addMatching();
    hxbench::addHexText();
    hxbench::addBuilder();
    hxbench::addRendering();
    hxbench::addSearching();
    hxbench::addCutting();
    hxbench::addComparison();
    hxbench::addFields();
    hxbench::addPlainOperations();
    hxbench::addUpdateLoop();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
