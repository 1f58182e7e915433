#pragma once
// What a change of the two status words is called in the status text, in the log and in the event file.

#include <string_view>

namespace months::check {

struct status_message {
    bool alarm_word;                               ///< which of the two words has the bits
    int bits;                                      ///< all of them have to be set
    const char* who;                               ///< Evaluator or KVD
    std::string_view box, note, event;             ///< when they are set; no note where it is empty
    std::string_view box_off, note_off, event_off; ///< when they are clear again; nothing where empty
};

inline constexpr int inhibit_row = 17;  ///< its bit is the alarm inhibit time's
inline constexpr int prealarm_row = 16; ///< its event names the channel's number only

// clang-format off
inline constexpr status_message status_messages[] = {
    {false, 0x8000, "Evaluator", " ## Memory Overflow", "Evaluator Memory Overflow", " ## Memory Overflow", {}, {}, {}},
    {false, 0x4000, "Evaluator", " ## CRC Error", "Evaluator CRC Error", " CRC Error", {}, {}, {}},
    {false, 0x2000, "Evaluator", " ## Memory Timeout", "Evaluator Memory Timeout", " ## Memory Timeout", {}, {}, {}},
    {false, 0x1000, "Evaluator", " ## Memory Error", "Evaluator Memory Error", " ## Memory Error", {}, {}, {}},
    {false, 0x0004, "KVD", " ## INCA signal Error", "KVD INCA Error", " ## INCA signal Error", {}, {}, {}},
    {false, 0x0008, "KVD", " ## INCB signal Error", "KVD INCB Error", " ## INCB signal Error", {}, {}, {}},
    {false, 0x0010, "KVD", " ## Sync signal Error", "KVD SYNC Error", " ## Sync signal Error", {}, {}, {}},
    {false, 0x0063, "KVD", " ## Not connected", "", " ## Not connected", {}, {}, {}},
    {false, 0x0020, "KVD", " ## Test signal Error", "KVD TESTSIGNAL Error", " ## Test signal Error", {}, {}, {}},
    {true, 0x2000, "KVD", " ## Overspeed Alarm ON", "KVD Overspeed Alarm ON", " ## Overspeed Alarm ON",
     " ## Overspeed Alarm OFF", "KVD Overspeed Alarm OFF", " ## Overspeed Alarm OFF"},
    {true, 0x0100, "KVD", " ## Main Error", "KVD Main error", " ## Main Error", {}, {}, {}},
    {true, 0x0002, "KVD", " ## Main Alarm DC ON", "KVD Main ALARM DC ON", " ## Main Alarm DC ON",
     " ## Main Alarm DC OFF", "KVD Main ALARM DC OFF", " ## Main Alarm DC OFF"},
    {true, 0x0001, "KVD", " ## Prealarm DC ON", "KVD Prealarm DC ON", " ## Prealarm DC ON",
     " ## Prealarm DC OFF", "KVD Prealarm DC OFF", " ## Prealarm DC OFF"},
    {true, 0x0008, "KVD", " ## Main Alarm AC ON", "KVD Main ALARM AC ON", " ## Main Alarm AC ON",
     " ## Main Alarm AC OFF", "KVD Main ALARM AC OFF", " ## Main Alarm AC OFF"},
    {true, 0x0004, "KVD", " ## Prealarm AC ON", "KVD Prealarm AC ON", " ## Prealarm AC ON",
     " ## Prealarm AC OFF", "KVD Prealarm AC OFF", " ## Prealarm AC OFF"},
    {true, 0x8000, "KVD", " ## Main Alarm ON", "KVD Main ALARM ON", " ## Main Alarm ON",
     " ## Main Alarm OFF", "KVD Main ALARM OFF", " ## Main Alarm OFF"},
    {true, 0x4000, "KVD", " ## Prealarm ON", "KVD Prealarm ON", " Prealarm ON",
     " ## Prealarm OFF", "KVD Prealarm OFF", " ## Prealarm OFF"},
    {true, 0, "KVD", " ## Alarm Inhibit ON", "KVD Alarm Inhibit ON", " ## Alarm Inhibit ON",
     " ## Alarm Inhibit OFF", "KVD Alarm Inhibit OFF", " ## Alarm Inhibit OFF"},
};
// clang-format on

} // namespace months::check
