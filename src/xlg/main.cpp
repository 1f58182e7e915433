// xlg: reads the logs and the event file. "xlg --help" tells the commands.

#include "basics/failure.h"
#include "xlg/arguments.h"
#include "xlg/files.h"
#include "xlg/progress.h"
#include "xlg/run_files.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace tyxo;
using namespace tyxo::xlg;

/// Only plain files tell how much there is to read.
bool progress_is_wanted(const arguments& wanted, std::int64_t total) {
    return isatty(STDERR_FILENO) != 0 && total > 0 &&
           std::ranges::find(wanted.files, "-") == wanted.files.end();
}

int run(const arguments& wanted) {
    std::int64_t total = 0;
    for (const std::string& file : wanted.files)
        total += size_of_file(file);
    progress shown(progress_is_wanted(wanted, total) ? stderr : nullptr, total);
    const text_sink standard_output = sink_of_stream(stdout, "standard output");
    const text_sink standard_error = sink_of_stream(stderr, "standard error");
    const auto above_progress = [&shown](const text_sink& to) {
        return [&shown, to](std::string_view text) {
            shown.hide();
            to(text);
        };
    };
    const int code =
        run_files(wanted, above_progress(standard_output), above_progress(standard_error), shown);
    if (std::fflush(stdout) != 0) throw failure("cannot write standard output");
    return code;
}

/// Windows and pictures have a program of their own beside this one, which stays without a desktop. Does not
/// return. Failure: there is none.
[[noreturn]] void become_view(char** words) {
    std::error_code error;
    const auto own = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::string view = (own.parent_path() / "xlg-view").string();
    words[0] = const_cast<char*>(view.c_str());
    execv(view.c_str(), words);
    throw failure("plot and view are in the package xlg-view; cannot start " + view + ": " +
                  std::strerror(errno));
}

} // namespace

int main(int count, char** words) {
    const std::vector<std::string_view> all(words + 1, words + count);
    try {
        const arguments wanted = arguments_of(all);
        if (!wanted.help && (wanted.what == command::plot || wanted.what == command::view))
            become_view(words);
        if (!wanted.help) return run(wanted);
        std::fputs(std::string(help_page(wanted.what)).c_str(), stdout);
        return exit_codes::fine;
    } catch (const failure& why) {
        std::fprintf(stderr, "xlg: %s; \"xlg --help\" tells more\n", why.what());
        return exit_codes::failed;
    }
}
