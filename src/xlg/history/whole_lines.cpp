#include "xlg/history/whole_lines.h"

#include "basics/failure.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>

namespace tyxo::xlg {

namespace {

open_file opened(const std::string& name) {
    std::error_code error;
    const std::filesystem::file_status what = std::filesystem::status(name, error);
    if (std::filesystem::is_directory(what)) throw failure(name + " is a folder");
    if (std::filesystem::exists(what) && !std::filesystem::is_regular_file(what))
        throw failure(name + " is no plain file");
    open_file file(std::fopen(name.c_str(), "rb"));
    if (!file) throw failure("cannot open " + name + ": " + std::strerror(errno));
    std::setvbuf(file.get(), nullptr, _IONBF, 0); // blocks are large enough
    return file;
}

void go_to(std::FILE* file, std::int64_t place, const std::string& name) {
    if (fseeko(file, place, SEEK_SET) != 0)
        throw failure("cannot read " + name + ": " + std::strerror(errno));
}

std::size_t read_block(std::FILE* file, std::span<char> room, const std::string& name) {
    const std::size_t read = std::fread(room.data(), 1, room.size(), file);
    if (std::ferror(file) != 0) throw failure("cannot read " + name + ": " + std::strerror(errno));
    return read;
}

} // namespace

bool whole_lines::open() {
    file_ = opened(name_);
    if (fseeko(file_.get(), 0, SEEK_END) != 0 || ftello(file_.get()) < place_) return false;
    return true;
}

std::size_t whole_lines::read(std::span<char> room) {
    if (!file_) return 0;
    go_to(file_.get(), place_, name_);
    std::size_t length = read_block(file_.get(), room, name_);
    const std::size_t feed = std::string_view(room.data(), length).rfind('\n');
    if (feed != std::string_view::npos)
        length = feed + 1;
    else if (length < room.size())
        length = 0;
    place_ += static_cast<std::int64_t>(length);
    return length;
}

std::string whole_lines::bytes(std::int64_t from, std::int64_t to) const {
    if (to <= from) return {};
    std::string text(static_cast<std::size_t>(to - from), '\0');
    const open_file file = opened(name_);
    go_to(file.get(), from, name_);
    text.resize(read_block(file.get(), text, name_));
    return text;
}

} // namespace tyxo::xlg
