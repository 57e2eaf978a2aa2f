// For an engine with a main function of its own: writes the seeds into the folder that
// CORVANE_FUZZ_SEEDS names.
#include "fuzz.h"

#include <filesystem>
#include <fstream>

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    char const* folder = std::getenv("CORVANE_FUZZ_SEEDS");
    const std::vector<std::string> seeds = fuzz_seeds();
    for (std::size_t k = 0; folder && k < seeds.size(); ++k)
        std::ofstream(std::filesystem::path(folder) / ("seed-" + std::to_string(k)),
                      std::ios::binary)
            << seeds[k];
    return 0;
}
