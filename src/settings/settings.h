#pragma once
// The values of the settings file that no channel owns, one table of all keys, and the keys' reading and
// writing.

#include "basics/per_channel.h"
#include "basics/types.h"
#include "link/channel_rec.h"

#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace tyxo {

struct settings_rec {
    i16 log_mode = 0;    ///< 1: a log file an hour; any other value: a log file a day
    i16 xy_tmv = 0;      ///< 0 hides the strip chart's trace "TmV x50"
    i16 xy_theff = 0;    ///< 0 hides "Teff %DCA"
    i16 xy_theff_AC = 0; ///< 0 hides "Teff %ACA"
    i16 xy_tha = 0;      ///< 0 hides "Tsig %DCA"
    std::string passwd;  ///< of stop lock and setup, in the clear
    bool autostart = false;
    i16 speedbar_mode = 0;      ///< 0: difference diagrams in geometric order, else in firing order
    i16 eventfile_ena = 0;      ///< 1 enables the event file for this run
    i16 eventfile_ena_edit = 0; ///< what the setup dialog changes and the next start reads
    std::string evtpath;        ///< folder of the event file, with its closing separator
    std::string IPAdr;          ///< plant controller: host name or address
    i16 IPport = 0;             ///< its TCP port
    i16 IPsend = 0;             ///< read, used by nothing
    // Limits of the registers are the dialog's; those that the file holds are not checked.
    i32 REGBase = 0;   ///< first register of the automatic image, at most 62300
    i16 REGNumber = 0; ///< registers of the manual access, at most 123
    u8 IPAutoC = 0;    ///< 1 connects at start-up
    u8 IPenaTRS = 0;   ///< 1 sends the measured values
    i16 IPpolar = 0;   ///< 1 sends the cylinder blocks
    i16 IPsysstat = 0; ///< 1 sends the status block
    i32 Sendbase = 0;  ///< first register of the manual access, at most 65410
    u8 REGView = 0;    ///< 1 shows the register boxes of the Modbus dialog
    u8 IPRefresh = 0;  ///< 0, 1, 2: send tick of 600, 450, 300 ms
};

inline settings_rec settings;

namespace Ini {

/// What a value becomes when it is outside its range; the repaired value is written back at once.
struct repair {
    i16 least = 0;
    i16 greatest = 0;
    i16 value = 0;
};

using global_target = std::variant<i16*, i32*, u8*, double*, bool*, std::string*>;

struct global_key {
    std::string_view key; ///< as it is read; matching a key ignores case
    global_target target; ///< `bool`: on when the value is the number 1
    const repair* repaired = nullptr;
};

using channel_target = std::variant<i16 channel_rec::*, std::string channel_rec::*, per_channel<i16>*>;

struct channel_key {
    std::string_view stem; ///< the channel's number follows
    channel_target target;
    std::string_view when_empty;
    bool saved; ///< `var_save` writes it
};

/// Reads one key into its value. Failure, with the key's name: a number outside its type's range, or a
/// channel that does not exist.
void load(const global_key& row);
void load(const channel_key& row, i16 channel);

/// The rows that `load_settings` reads before and behind the rows per channel, each in order.
[[nodiscard]] std::span<const global_key> first_keys();
[[nodiscard]] std::span<const channel_key> channel_keys();
[[nodiscard]] std::span<const global_key> last_keys();

/// Writes the keys that the setup dialog edits, as one change; those of a removed channel keep their old
/// values. Waits as `ini_write` does, once for all keys.
void var_save();

/// A channel's key: "location 2".
[[nodiscard]] std::string key_of(std::string_view stem, i16 channel);

} // namespace Ini
} // namespace tyxo
