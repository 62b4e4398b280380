#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

constexpr int kMutationsPerSeed = 60;

void feed(const std::string& input)
{
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
}

std::string contentsOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// A handful of small changes: replaced, doubled, removed and swapped stretches.
std::string mutated(std::string text, std::mt19937& random)
{
    for (int change = 0; change < 4; ++change) {
        const std::size_t at = text.empty() ? 0 : random() % text.size();
        const std::size_t length = std::min<std::size_t>(random() % 9, text.size() - at);
        switch (random() % 4) {
        case 0:
            if (!text.empty()) {
                text[at] = static_cast<char>(random() % 256);
            }
            break;
        case 1:
            text.insert(at, text.substr(at, length));
            break;
        case 2:
            text.erase(at, length);
            break;
        default:
            text.insert(at, random() % 8, text.empty() ? '/' : text[at]);
            break;
        }
    }
    return text;
}

} // namespace

/// Runs a fuzz target over the files of a folder and seeded mutations of them.
int main(int argc, char** argv)
{
    std::mt19937 random(1);
    feed({});
    int inputs = 1;
    for (int i = 1; i < argc; ++i) {
        std::vector<std::filesystem::path> seeds;
        for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
            seeds.push_back(entry.path());
        }
        std::sort(seeds.begin(), seeds.end());
        for (const auto& seed : seeds) {
            const std::string text = contentsOf(seed);
            feed(text);
            for (int count = 0; count < kMutationsPerSeed; ++count) {
                feed(mutated(text, random));
            }
            inputs += 1 + kMutationsPerSeed;
        }
    }
    std::printf("%d inputs\n", inputs);
    return 0;
}
