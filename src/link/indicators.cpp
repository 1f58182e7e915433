#include "link/indicators.h"

#include "basics/number_text.h"
#include "link/calls.h"
#include "platform/clock.h"

namespace tyxo {

void raise_event(i16 channel, const event_texts& texts) {
    const local_time shown = local_now();
    indicators.Text_status.append(stamp_text(shown, ' ') + std::string(texts.box) + "\r\n");
    if (!texts.comment.empty()) calls.log_comment(channel, texts.comment);
    const local_time filed = local_now();
    calls.event_line(stamp_text(filed, ';') + ';' + std::string(texts.file));
}

std::string channel_number(i16 channel) {
    return plain(channel + 1);
}

} // namespace tyxo
