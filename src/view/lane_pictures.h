#pragma once
// Lanes below each other as one picture, for files and for paper.

#include "view/lane.h"
#include "view/pictures.h"

#include <QSize>
#include <QString>

#include <memory>
#include <string>
#include <vector>

namespace tyxo::view {

using lane_list = std::vector<std::unique_ptr<lane>>;

/// "2026-07-02 13:05:09 to 15:05:09".
[[nodiscard]] QString period_text(const time_range& range);

/// "8 cylinder V - type, 4 stroke engine, 1500 rpm", as the log of this log time in ms tells it; nothing of
/// one that does not know its engine.
[[nodiscard]] QString engine_words(const lane& one, std::int64_t ms);

/// The size of a picture of so many charts, in pixels: for the screen, or a sheet of A4.
[[nodiscard]] QSize usual_size_of(std::size_t charts, const std::string& file);

/// The charts of all lanes over the same time of the window. Failure: a log cannot be read.
void paint_lanes(QCPPainter& painter, const picture_place& place, const QString& title,
                 const lane_list& lanes, const time_range& window);

} // namespace tyxo::view
