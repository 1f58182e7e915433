#include "xlg/arguments.h"

#include "basics/failure.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace tyxo::xlg {

namespace {

constexpr auto command_names = std::to_array<std::pair<std::string_view, command>>({
    {"check", command::check},
    {"summary", command::summary},
    {"csv", command::csv},
    {"mend", command::mend},
    {"events", command::events},
    {"plot", command::plot},
    {"view", command::view},
});

constexpr auto csv_names = std::to_array<std::pair<std::string_view, csv_lines>>({
    {"records", csv_lines::records},
    {"curves", csv_lines::curves},
    {"comments", csv_lines::comments},
});

template <class Value, std::size_t Count>
Value named(const std::array<std::pair<std::string_view, Value>, Count>& names, std::string_view name,
            std::string_view what) {
    for (const auto& [text, value] : names)
        if (text == name) return value;
    throw failure("there is no " + std::string(what) + " \"" + std::string(name) + "\"");
}

int number_of(std::string_view option, std::string_view text, int least) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < least)
        throw failure(std::string(option) + " takes a number from " + std::to_string(least) + " on, not \"" +
                      std::string(text) + "\"");
    return value;
}

/// Goes along the words.
class word_reader {
  public:
    explicit word_reader(std::span<const std::string_view> words) : words_(words) {}

    arguments read() {
        while (at_ < words_.size())
            word(words_[at_++]);
        return std::move(found_);
    }

  private:
    void word(std::string_view text) {
        if (only_files_ || text == "-" || !text.starts_with('-')) {
            if (found_.what == command::none)
                found_.what = named(command_names, text, "command");
            else
                found_.files.emplace_back(text);
        } else if (text == "--") {
            only_files_ = true;
        } else {
            option(text);
        }
    }

    void option(std::string_view text) {
        const command what = found_.what;
        if (text == "--help" || text == "-h")
            found_.help = true;
        else if (what == command::plot || what == command::view)
            option_of_pictures(text);
        else if (text == "--jobs" && what != command::mend)
            found_.jobs = static_cast<std::size_t>(number_of(text, value_of(text), 1));
        else if (text == "--gap" && (what == command::check || what == command::summary))
            found_.gap_minutes = number_of(text, value_of(text), 1);
        else if (text == "--what" && what == command::csv)
            found_.lines = named(csv_names, value_of(text), "kind of rows");
        else if (text == "-o" && what == command::mend)
            found_.output = value_of(text);
        else if (text == "--force" && what == command::mend)
            found_.force = true;
        else if (text == "--csv" && what == command::events)
            found_.csv = true;
        else
            throw failure("there is no option " + std::string(text) + (what == command::none ? "" : " here"));
    }

    void option_of_pictures(std::string_view text) {
        plot_wishes& wishes = found_.plot;
        if (found_.what != command::plot) throw failure("there is no option " + std::string(text) + " here");
        if (text == "--from")
            wishes.from = time_told(value_of(text));
        else if (text == "--to")
            wishes.to = time_told(value_of(text));
        else if (text == "--cycle")
            wishes.cycle = time_told(value_of(text));
        else if (text == "--as")
            wishes.kind = kind_told(value_of(text));
        else if (text == "--size")
            wishes.size = size_told(value_of(text));
        else if (text == "--title")
            wishes.title = value_of(text);
        else if (text == "--settings")
            wishes.settings = value_of(text);
        else if (text == "-o")
            found_.output = value_of(text);
        else if (text == "--force")
            found_.force = true;
        else
            throw failure("there is no option " + std::string(text) + " here");
    }

    std::string_view value_of(std::string_view option) {
        if (at_ == words_.size()) throw failure("a value is missing behind " + std::string(option));
        return words_[at_++];
    }

    std::span<const std::string_view> words_;
    std::size_t at_ = 0;
    bool only_files_ = false;
    arguments found_;
};

void check_picture(arguments& wanted) {
    plot_wishes& wishes = wanted.plot;
    if (wishes.kind != picture_kind::chart && !wishes.cycle) throw failure("--as needs --cycle and a time");
    if (wishes.cycle && (wishes.from || wishes.to))
        throw failure("a cycle has no length: --cycle stands without --from and --to");
    if (wishes.cycle && wishes.kind == picture_kind::chart) wishes.kind = picture_kind::scope;
    if (!wanted.output.empty()) (void)format_told(wanted.output);
}

} // namespace

arguments arguments_of(std::span<const std::string_view> words) {
    arguments found = word_reader(words).read();
    if (found.help) return found;
    if (found.what == command::none) throw failure("a command is missing");
    if (found.what == command::plot) check_picture(found);
    if (found.what == command::view && found.files.empty()) return found;
    if ((found.what == command::plot || found.what == command::view) &&
        std::ranges::find(found.files, "-") != found.files.end())
        throw failure("pictures are made of files, which standard input is not");
    if (found.files.empty() && found.what == command::plot) throw failure("a log is missing");
    if (found.files.empty()) throw failure("a file is missing; \"-\" is standard input");
    if (std::ranges::count(found.files, "-") > 1) throw failure("standard input can be read once only");
    if (found.what == command::mend) {
        if (found.files.size() > 1) throw failure("mend takes one file");
        if (found.output.empty()) throw failure("mend needs -o and a file for the repaired copy");
    }
    return found;
}

} // namespace tyxo::xlg
