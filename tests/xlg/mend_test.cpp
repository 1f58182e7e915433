// Repaired copies: what is whole stays, what is not is told.

#include "xlg/mend.h"

#include "basics/failure.h"
#include "xlg/check.h"
#include "xlg/log_texts.h"

#include <sys/stat.h>
#include <unistd.h>

namespace tyxo::xlg {
namespace {

struct mended_log {
    bool sound = false;
    std::string copy;
    std::vector<std::string> told;
};

mended_log mended(const std::string& log) {
    mended_log result;
    std::string told;
    result.sound = mend_log(
        "F", source_of(log), [&result](std::string_view text) { result.copy += text; },
        [&told](std::string_view text) { told += text; });
    result.told = lines_of(told);
    return result;
}

bool nothing_wrong(const std::string& log) {
    return check_log("F", source_of(log), {}, [](std::string_view) {});
}

/// Only the last line of what was told, the figures.
std::string figures(const mended_log& result) {
    return result.told.empty() ? "" : result.told.back();
}

TEST(XlgMend, ASoundLogIsCopiedByteForByte) {
    for (const auto& each : std::filesystem::directory_iterator(golden_folder())) {
        const std::string log = file_content(each.path());
        const mended_log result = mended(log);
        EXPECT_EQ(result.copy, log) << each.path();
        EXPECT_TRUE(result.sound) << each.path();
        EXPECT_EQ(result.told.size(), 1U) << each.path();
    }
}

TEST(XlgMend, ACutLineIsACommentOfWhatWasDropped) {
    const std::string line = "<REC1> 13:05:09 51 1480 1234 48 7 </REC1>\r\n";
    const mended_log result = mended(golden_with(line, line + "<REC1> 13:05:10 51 14\r\n"));
    EXPECT_EQ(
        result.copy,
        golden_with(line, line + "<!-- 13:05:09 xlg mend dropped line 108: <REC1> 13:05:10 51 14 -->\r\n"));
    EXPECT_EQ(result.told, (std::vector<std::string>{
                               "F:108: dropped: REC1: torn, cut behind 1 of 5 values (<REC1> 13:05:10 51 14)",
                               "F: 1 line dropped, 0 line ends added, 0 faults left; 7,905 bytes"}));
    EXPECT_FALSE(result.sound);
    EXPECT_TRUE(nothing_wrong(result.copy));
}

TEST(XlgMend, AMissingLineEndIsAdded) {
    const std::string log = six_cylinders();
    for (const std::size_t missing : {1U, 2U}) {
        const mended_log result = mended(log.substr(0, log.size() - missing));
        EXPECT_EQ(result.copy, log);
        EXPECT_EQ(result.told.front(), "F:113: line end added");
        EXPECT_FALSE(result.sound);
    }
    std::string unix = log;
    std::erase(unix, '\r');
    const mended_log result = mended(unix);
    EXPECT_EQ(result.copy, log);
    EXPECT_EQ(figures(result), "F: 0 lines dropped, 113 line ends added, 0 faults left; 7,837 bytes");
}

TEST(XlgMend, ASecondHeaderIsOneComment) {
    const mended_log result = mended(six_cylinders() + six_cylinders());
    EXPECT_EQ(result.told, (std::vector<std::string>{
                               "F:114: dropped: a second header begins (<?xml version=\"1.0\"?>)",
                               "F: 106 lines dropped, 0 line ends added, 0 faults left; 10,714 bytes"}));
    EXPECT_TRUE(nothing_wrong(result.copy));
    EXPECT_EQ(lines_of(result.copy).size(), 113U + 1 + 7);
}

TEST(XlgMend, WhatIsWholeStaysThoughItIsWrong) {
    const std::string log = golden_with("1480 1234", "9999 1234");
    const mended_log result = mended(log);
    EXPECT_EQ(result.copy, log);
    EXPECT_EQ(result.told.front(), "F:107: left as it is: REC1: Speed is 9999, not within 0 to 6554 "
                                   "(<REC1> 13:05:09 51 9999 1234 48 7 </REC1>)");
    EXPECT_FALSE(result.sound);
}

TEST(XlgMend, InTheHeaderOnlyLineEndsAreMended) {
    const std::string log = golden_with("<NUMZYL> 6 </NUMZYL>", "<NUMZYL> 6");
    EXPECT_EQ(mended(log).copy, log);
    const std::string too_long = golden_with("TX-6", std::string(5000, 'x'));
    EXPECT_EQ(mended(too_long).copy, golden_with("        <TYPECODE> TX-6 </TYPECODE>\r\n", ""));
}

TEST(XlgMend, BytesThatAreNoTextAreQuestionMarksInTheComment) {
    const mended_log result = mended(log_of({std::string("a\0\x81 b", 5)}));
    EXPECT_TRUE(result.copy.ends_with("<!-- 00:00:00 xlg mend dropped line 107: a?? b -->\r\n"))
        << result.copy;
    EXPECT_TRUE(nothing_wrong(result.copy));
}

TEST(XlgMend, WhatIsCutAnywhereIsMendedAndMendingAgainChangesNothing) {
    const std::string log = six_cylinders();
    const std::string behind = "\r\n<REC1> 13:05:10 51 1480 1234 48 7 </REC1>\r\n";
    for (std::size_t cut = a_header().size(); cut <= log.size(); cut += cut > 5300 && cut < 7400 ? 61 : 1) {
        for (const std::string& torn : {log.substr(0, cut), log.substr(0, cut) + behind}) {
            const mended_log result = mended(torn);
            EXPECT_TRUE(nothing_wrong(result.copy)) << cut;
            const mended_log again = mended(result.copy);
            EXPECT_TRUE(again.sound) << cut;
            EXPECT_EQ(again.copy, result.copy) << cut;
        }
    }
}

class XlgMendFile : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::create_directories(folder);
        put(log, six_cylinders() + "<REC1> 13:05");
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    static void put(const std::filesystem::path& path, const std::string& content) {
        std::ofstream(path, std::ios::binary) << content;
    }
    [[nodiscard]] bool mend(const std::filesystem::path& to, bool force = false) const {
        return mend_file(log, source_of(file_content(log)), to, force, [](std::string_view) {});
    }
    [[nodiscard]] std::size_t files() const {
        const std::filesystem::directory_iterator all(folder);
        return static_cast<std::size_t>(std::distance(begin(all), end(all)));
    }

    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("xlg_mend_test." + std::to_string(::getpid()));
    const std::filesystem::path log = folder / "a.xlg";
    const std::filesystem::path copy = folder / "b.xlg";
};

TEST_F(XlgMendFile, TheCopyIsANewFile) {
    EXPECT_FALSE(mend(copy));
    EXPECT_TRUE(nothing_wrong(file_content(copy)));
    EXPECT_EQ(files(), 2U) << "and nothing beside it";
}

TEST_F(XlgMendFile, AnExistingFileIsReplacedByForceOnly) {
    put(copy, "precious");
    EXPECT_THROW(static_cast<void>(mend(copy)), failure);
    EXPECT_EQ(file_content(copy), "precious");
    EXPECT_FALSE(mend(copy, true));
    EXPECT_TRUE(nothing_wrong(file_content(copy)));
}

TEST_F(XlgMendFile, TheLogItselfIsNeverWritten) {
    const std::string before = file_content(log);
    create_hard_link(log, folder / "hard");
    create_symlink(log, folder / "soft");
    for (const char* const name : {"a.xlg", "./a.xlg", "hard", "soft"}) {
        EXPECT_THROW(static_cast<void>(mend(folder / name, true)), failure) << name;
        EXPECT_EQ(file_content(log), before) << name;
    }
    EXPECT_EQ(files(), 3U);
}

TEST_F(XlgMendFile, ALinkStaysAndWhatItLeadsToIsReplaced) {
    put(folder / "target", "old");
    create_symlink(folder / "target", copy);
    EXPECT_THROW(static_cast<void>(mend(copy)), failure);
    EXPECT_FALSE(mend(copy, true));
    EXPECT_TRUE(is_symlink(copy));
    EXPECT_TRUE(nothing_wrong(file_content(folder / "target")));
    create_symlink(folder / "nothing", folder / "dangling");
    EXPECT_THROW(static_cast<void>(mend(folder / "dangling", true)), failure);
    EXPECT_EQ(files(), 4U);
}

TEST_F(XlgMendFile, WhatIsNoPlainFileIsNeverReplaced) {
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_THROW(static_cast<void>(mend(folder / "pipe", true)), failure);
    EXPECT_TRUE(is_fifo(folder / "pipe"));
}

TEST_F(XlgMendFile, AFailureLeavesNothing) {
    const byte_source fails = [](std::span<char>) -> std::size_t { throw failure("the disk is gone"); };
    EXPECT_THROW(static_cast<void>(mend_file(log, fails, copy, false, [](std::string_view) {})), failure);
    EXPECT_THROW(static_cast<void>(mend(folder / "no folder" / "b.xlg")), failure);
    EXPECT_THROW(static_cast<void>(mend(folder, true)), failure);
    EXPECT_EQ(files(), 1U);
}

} // namespace
} // namespace tyxo::xlg
