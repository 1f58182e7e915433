// Several files at a time, told in their order; the command line; how far the tool has come.

#include "xlg/run_files.h"

#include "basics/failure.h"
#include "xlg/log_texts.h"
#include "xlg/ordered_output.h"

#include <unistd.h>

#include <thread>

namespace tyxo::xlg {
namespace {

arguments read_words(const std::vector<std::string_view>& words) {
    return arguments_of(words);
}

std::string refusal(const std::vector<std::string_view>& words) {
    return attempt([&] { static_cast<void>(read_words(words)); }).value_or("taken");
}

TEST(XlgArguments, WhatIsGivenIsTaken) {
    const arguments check = read_words({"check", "--gap", "5", "a", "-", "--jobs", "3", "--", "--b"});
    EXPECT_EQ(check.what, command::check);
    EXPECT_EQ(check.files, (std::vector<std::string>{"a", "-", "--b"}));
    EXPECT_EQ(check.jobs, 3U);
    EXPECT_EQ(check.gap_minutes, 5);
    EXPECT_EQ(read_words({"csv", "--what", "curves", "a"}).lines, csv_lines::curves);
    EXPECT_EQ(read_words({"csv", "a"}).lines, csv_lines::records);
    const arguments mend = read_words({"mend", "a", "-o", "b", "--force"});
    EXPECT_EQ(mend.output, "b");
    EXPECT_TRUE(mend.force);
    EXPECT_TRUE(read_words({"events", "--csv", "a"}).csv);
    EXPECT_TRUE(read_words({"check", "--help"}).help);
    EXPECT_TRUE(read_words({"--help"}).help);
}

TEST(XlgArguments, WhatCannotBeDoneIsRefusedInWords) {
    EXPECT_EQ(refusal({}), "a command is missing");
    EXPECT_EQ(refusal({"look", "a"}), "there is no command \"look\"");
    EXPECT_EQ(refusal({"check"}), "a file is missing; \"-\" is standard input");
    EXPECT_EQ(refusal({"check", "--fast", "a"}), "there is no option --fast here");
    EXPECT_EQ(refusal({"--gap", "3", "check", "a"}), "there is no option --gap");
    EXPECT_EQ(refusal({"csv", "--gap", "3", "a"}), "there is no option --gap here");
    EXPECT_EQ(refusal({"check", "a", "--gap"}), "a value is missing behind --gap");
    EXPECT_EQ(refusal({"check", "a", "--gap", "0"}), "--gap takes a number from 1 on, not \"0\"");
    EXPECT_EQ(refusal({"check", "a", "--jobs", "3x"}), "--jobs takes a number from 1 on, not \"3x\"");
    EXPECT_EQ(refusal({"csv", "--what", "all", "a"}), "there is no kind of rows \"all\"");
    EXPECT_EQ(refusal({"check", "-", "-"}), "standard input can be read once only");
    EXPECT_EQ(refusal({"mend", "a"}), "mend needs -o and a file for the repaired copy");
    EXPECT_EQ(refusal({"mend", "a", "b", "-o", "c"}), "mend takes one file");
}

TEST(XlgArguments, EveryPageTellsTheExitCodes) {
    for (const command each :
         {command::none, command::check, command::summary, command::csv, command::mend, command::events})
        EXPECT_NE(help_page(each).find("Ends with 0"), std::string_view::npos);
}

TEST(XlgOrderedOutput, WhatThreadsSayStandsInTheOrderOfTheFiles) {
    constexpr std::size_t files = 6;
    std::string said;
    ordered_output output(files, [&said](std::string_view text) { said += text; });
    const std::string piece(1000, 'x');
    {
        std::vector<std::jthread> threads;
        for (std::size_t file = files; file-- > 0;)
            threads.emplace_back([&, file] {
                for (int more = 0; more < 4000; ++more) // more than may wait in memory
                    output.say(file, std::to_string(file) + piece);
                output.finish(file);
            });
    }
    std::string expected;
    for (std::size_t file = 0; file < files; ++file)
        for (int more = 0; more < 4000; ++more)
            expected += std::to_string(file) + piece;
    EXPECT_EQ(said, expected);
}

TEST(XlgOrderedOutput, AFullOutputIsTheFailureOfWhoeverSaysMore) {
    ordered_output output(2, [](std::string_view) { throw failure("no room"); });
    EXPECT_THROW(output.say(0, "a"), failure);
    EXPECT_THROW(output.say(1, "b"), failure);
    output.finish(0);
    output.finish(1);
}

TEST(XlgProgress, ItTellsPartAmountAndRate) {
    EXPECT_EQ(progress_text(0, 2'000'000, 0), "[                    ] 0 % of 2 MB");
    EXPECT_EQ(progress_text(300'000'000, 1'200'000'000, 0.5),
              "[#####               ] 25 % of 1.2 GB, 600 MB/s");
    EXPECT_EQ(progress_text(8, 7, 1), "[####################] 100 % of 0 MB, 0 MB/s");
    EXPECT_EQ(progress_text(8, 0, 0), "[                    ] 0 % of 0 MB");
}

class XlgRunFiles : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directories(folder);
        wanted.what = command::check;
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    void add(const std::string& name, const std::string& content) {
        std::ofstream(folder / name, std::ios::binary) << content;
        wanted.files.push_back((folder / name).string());
    }
    int run() {
        out.clear();
        errors.clear();
        progress none(nullptr, 0);
        return run_files(
            wanted, [this](std::string_view text) { out += text; },
            [this](std::string_view text) { errors += text; }, none);
    }

    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("xlg_run_files_test." + std::to_string(::getpid()));
    arguments wanted;
    std::string out;
    std::string errors;
};

TEST_F(XlgRunFiles, TheWorstOfTheExitCodesCounts) {
    add("a.xlg", six_cylinders());
    EXPECT_EQ(run(), exit_codes::fine);
    add("b.xlg", six_cylinders() + "<RE");
    EXPECT_EQ(run(), exit_codes::wrong);
    wanted.files.insert(wanted.files.begin(), (folder / "missing.xlg").string());
    EXPECT_EQ(run(), exit_codes::failed);
    EXPECT_EQ(errors, "xlg: cannot open " + wanted.files[0] + ": No such file or directory\n");
    EXPECT_EQ(lines_of(out).size(), 3U) << "the other files are told";
    wanted.files[0] = folder.string();
    EXPECT_EQ(run(), exit_codes::failed);
    EXPECT_EQ(errors, "xlg: " + folder.string() + " is a folder\n");
}

TEST_F(XlgRunFiles, AnyNumberOfJobsSaysTheSame) {
    for (int file = 0; file < 30; ++file)
        add(std::to_string(file) + ".xlg",
            six_cylinders() + std::string(static_cast<std::size_t>(file % 7), 'x'));
    wanted.jobs = 1;
    EXPECT_EQ(run(), exit_codes::wrong);
    const std::string alone = out;
    EXPECT_EQ(lines_of(alone).size(), 30U + 25);
    for (const std::size_t jobs : {2U, 4U, 100U}) {
        wanted.jobs = jobs;
        EXPECT_EQ(run(), exit_codes::wrong);
        EXPECT_EQ(out, alone) << jobs;
    }
}

TEST_F(XlgRunFiles, ATableOfSeveralFilesHasOneHead) {
    add("a.xlg", six_cylinders());
    add("b.xlg", six_cylinders() + "<RE");
    wanted.what = command::csv;
    EXPECT_EQ(run(), exit_codes::wrong);
    const auto rows = lines_of(out);
    ASSERT_EQ(rows.size(), 5U);
    EXPECT_TRUE(rows[0].starts_with("file,line,time,"));
    EXPECT_TRUE(rows[1].starts_with(wanted.files[0] + ",107,"));
    EXPECT_TRUE(rows[4].starts_with(wanted.files[1] + ",111,"));
    EXPECT_EQ(errors, wanted.files[1] + ": 1 damaged line left out\n");
}

} // namespace
} // namespace tyxo::xlg
