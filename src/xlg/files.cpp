#include "xlg/files.h"

#include "basics/failure.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

namespace tyxo::xlg {

void file_closer::operator()(std::FILE* file) const {
    if (file != nullptr && file != stdin) std::fclose(file);
}

byte_source source_of_file(const std::string& name, std::function<void(std::size_t)> on_read) {
    const bool standard = name == "-";
    if (!standard && std::filesystem::is_directory(name)) throw failure(name + " is a folder");
    const std::shared_ptr<std::FILE> file(standard ? stdin : std::fopen(name.c_str(), "rb"), file_closer());
    if (!file) throw failure("cannot open " + name + ": " + std::strerror(errno));
    std::setvbuf(file.get(), nullptr, _IONBF, 0); // blocks are large enough
    return [file, name, told = std::move(on_read)](std::span<char> room) {
        const std::size_t read = std::fread(room.data(), 1, room.size(), file.get());
        if (std::ferror(file.get()) != 0) throw failure("cannot read " + name + ": " + std::strerror(errno));
        if (told) told(read);
        return read;
    };
}

std::int64_t size_of_file(const std::string& name) {
    std::error_code error;
    const auto size = std::filesystem::file_size(name, error);
    return error ? 0 : static_cast<std::int64_t>(size);
}

text_sink sink_of_stream(std::FILE* stream, std::string name) {
    return [stream, to = std::move(name)](std::string_view text) {
        if (std::fwrite(text.data(), 1, text.size(), stream) != text.size())
            throw failure("cannot write " + to + ": " + std::strerror(errno));
    };
}

bool same_file(const std::string& name, const std::string& path) {
    std::error_code error;
    return std::filesystem::equivalent(name == "-" ? "/dev/stdin" : name, path, error) && !error;
}

void write_whole_file(const std::string& path, bool force,
                      const std::function<void(const text_sink&)>& write) {
    std::error_code error;
    const auto there = std::filesystem::symlink_status(path, error);
    if (!force && std::filesystem::exists(there))
        throw failure(path + " is there already; --force replaces it");
    if (std::filesystem::is_symlink(there)) { // it stays, what it leads to is replaced
        const std::string target = std::filesystem::canonical(path, error).string();
        if (error) throw failure(path + " leads nowhere");
        write_whole_file(target, force, write);
        return;
    }
    if (std::filesystem::exists(there) && !std::filesystem::is_regular_file(there))
        throw failure(path + " is no plain file");
    const std::string part = path + ".part";
    open_file file(std::fopen(part.c_str(), "wbx"));
    if (!file) throw failure("cannot create " + part + ": " + std::strerror(errno));
    try {
        write(sink_of_stream(file.get(), part));
        if (std::fclose(file.release()) != 0)
            throw failure("cannot write " + part + ": " + std::strerror(errno));
        std::filesystem::rename(part, path, error);
        if (error) throw failure("cannot rename " + part + ": " + error.message());
    } catch (const failure&) {
        file.reset();
        std::filesystem::remove(part, error);
        throw;
    }
}

} // namespace tyxo::xlg
