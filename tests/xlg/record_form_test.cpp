// The quick look at a record, beside a slow one that goes character by character.

#include "xlg/record_form.h"

#include "xlg/log_texts.h"

namespace tyxo::xlg {
namespace {

/// The number that is all of the text, or -1.
long whole_number(const std::string& text) {
    if (text.empty() || text.size() > 9 || (text.size() > 1 && text[0] == '0')) return -1;
    long value = 0;
    for (const char digit : text) {
        if (digit < '0' || digit > '9') return -1;
        value = 10 * value + (digit - '0');
    }
    return value;
}

bool is_two_digits(const std::string& text, std::size_t at, int below) {
    const bool digits = text[at] >= '0' && text[at] <= '9' && text[at + 1] >= '0' && text[at + 1] <= '9';
    return digits && 10 * (text[at] - '0') + text[at + 1] - '0' < below;
}

bool is_record(const record_form& form, std::string text) {
    if (!text.starts_with(form.opening)) return false;
    text.erase(0, form.opening.size());
    if (text.size() < 9 || text[2] != ':' || text[5] != ':' || text[8] != ' ') return false;
    if (!is_two_digits(text, 0, 24) || !is_two_digits(text, 3, 60) || !is_two_digits(text, 6, 60))
        return false;
    text.erase(0, 9);
    for (const column_limit& column : form.columns) {
        const auto blank = text.find(' ');
        if (blank == text.npos) return false;
        const long value = whole_number(text.substr(0, blank));
        if (value < 0 || value > static_cast<long>(column.most)) return false;
        text.erase(0, blank + 1);
    }
    return text == form.closing;
}

std::vector<std::string> sound_records() {
    return {"<REC1> 13:05:09 51 1480 1234 48 7 </REC1>", "<REC1> 00:00:00 0 0 0 0 0 </REC1>",
            "<REC1> 23:59:59 3277 6554 32768 6554 6554 </REC1>", "<REC1> 19:35:49 9 99 999 999 1000 </REC1>"};
}

TEST(XlgRecordForm, AnyByteInAnyPlaceIsSeen) {
    const record_form& form = record_forms()[0];
    std::size_t sound = 0;
    for (const std::string& record : sound_records()) {
        ASSERT_TRUE(form.fits(record)) << record;
        for (std::size_t place = 0; place < record.size(); ++place) {
            for (int byte = 0; byte < 256; ++byte) {
                std::string text = record;
                text[place] = static_cast<char>(byte);
                const bool is = is_record(form, text);
                ASSERT_EQ(form.fits(text), is) << text;
                sound += is ? 1 : 0;
            }
        }
    }
    EXPECT_GT(sound, 500U) << "some are records all the same";
}

TEST(XlgRecordForm, AnyPlaceMayLackAByteOrHaveOneMore) {
    const record_form& form = record_forms()[0];
    for (const std::string& record : sound_records()) {
        for (std::size_t place = 0; place <= record.size(); ++place) {
            std::string text = record.substr(0, place);
            EXPECT_EQ(form.fits(text), place == record.size()) << text;
            text += record.substr(std::min(place + 1, record.size()));
            EXPECT_EQ(form.fits(text), is_record(form, text)) << text;
            for (const char byte : {' ', '0', '1', '9', '-', '>'}) {
                text = record;
                text.insert(place, 1, byte);
                EXPECT_EQ(form.fits(text), is_record(form, text)) << text;
            }
        }
    }
}

TEST(XlgRecordForm, EveryValueOfACurveIsLookedAt) {
    for (const record_form& form : {record_forms()[1], record_forms()[2]}) {
        const std::string curve = curve_line(form.tag, 9900);
        ASSERT_TRUE(form.fits(curve));
        for (std::size_t place = 0; place < curve.size(); ++place) {
            for (const char byte : {'0', '9', ' ', 'x', '/', ':', '\xB5'}) {
                std::string text = curve;
                text[place] = byte;
                ASSERT_EQ(form.fits(text), is_record(form, text)) << text;
            }
        }
    }
}

TEST(XlgRecordForm, EveryNumberUpToAHundredThousandIsInItsRangeOrNot) {
    const record_form& form = record_forms()[0];
    for (std::uint32_t value = 0; value <= 100'000; ++value) {
        const std::string number = std::to_string(value);
        for (std::size_t column = 0; column < form.columns.size(); ++column) {
            std::string text = "<REC1> 13:05:09 ";
            for (std::size_t each = 0; each < form.columns.size(); ++each)
                text += (each == column ? number : "1") + " ";
            ASSERT_EQ(form.fits(text + "</REC1>"), value <= form.columns[column].most) << text;
        }
    }
}

TEST(XlgRecordForm, WhatDoesNotFitHasAFaultInWords) {
    for (const record_form& form : record_forms()) {
        for (const std::string& text :
             {form.opening, form.opening + form.closing, form.opening + "x" + form.closing,
              form.opening + "13:05:09 " + form.closing}) {
            EXPECT_FALSE(form.fits(text)) << text;
            EXPECT_FALSE(fault_of(form, text).what.empty()) << text;
        }
    }
}

} // namespace
} // namespace tyxo::xlg
