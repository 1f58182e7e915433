// Runs a fuzzer once over files, without looking for others: fuzz_replay TARGET FILE_OR_FOLDER...

#include "fuzz/targets.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

using namespace tyxo::fuzzing;

struct target {
    std::string_view name;
    void (*run)(input);
};

constexpr auto targets = std::to_array<target>({
    {"received_bytes", received_bytes},
    {"settings_file", settings_file},
    {"modbus_answers", modbus_answers},
    {"curves_and_engines", curves_and_engines},
    {"numbers_and_texts", numbers_and_texts},
    {"files_found", files_found},
    {"logs_read", logs_read},
});

/// In the order of their names, which stand in the output when one of them ends the process.
std::vector<std::filesystem::path> files_in(const std::filesystem::path& place) {
    if (!std::filesystem::is_directory(place)) return {place};
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(place))
        files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

void run(const target& fuzzer, const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream), {}};
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);
    fuzzer.run({reinterpret_cast<const tyxo::u8*>(content.data()), content.size()});
}

} // namespace

int main(int count, char** words) {
    const auto* const fuzzer =
        std::ranges::find(targets, count > 2 ? std::string_view(words[1]) : "", &target::name);
    if (fuzzer == targets.end()) {
        std::fprintf(stderr, "fuzz_replay TARGET FILE_OR_FOLDER...\n");
        return 2;
    }
    std::size_t files = 0;
    for (int word = 2; word < count; ++word) {
        for (const auto& file : files_in(words[word])) {
            run(*fuzzer, file);
            ++files;
        }
    }
    std::printf("%zu files\n", files);
    return files > 0 ? 0 : 1; // nothing tried, nothing shown
}
