// How logs come into the log window: opened, followed, dropped.

#include "platform/desktop/text.h"
#include "view/log_window.h"
#include "view/plant_settings.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QUrl>

#include <algorithm>
#include <utility>

namespace tyxo::view {

namespace {

constexpr int loading_tick = 30;    // ms
constexpr int looks_at_folders = 5; // a tick of so many

} // namespace

void log_window::open(const std::vector<std::string>& names) {
    for (const std::string& name : names)
        if (std::ranges::find(names_, name) == names_.end()) names_.push_back(name);
    ask_again_ = ask_again_ || (loader_ && !names.empty());
    if (loader_) return;
    std::vector<std::string> files = logs_named(names_);
    std::erase_if(
        files, [this](const std::string& file) { return std::ranges::find(opened_, file) != opened_.end(); });
    if (files.empty()) {
        if (logs_.empty() && !names.empty())
            tell(tr("There is no log in %1.").arg(QString::fromStdString(names.front())));
        return;
    }
    opened_.insert(opened_.end(), files.begin(), files.end());
    if (!has_room_for(files)) return;
    if (logs_.empty()) load_plant_settings(files.front());
    loader_ = std::make_unique<log_loader>(std::move(files));
    loading_timer_.start(loading_tick);
    progress_->setValue(0);
    progress_->setVisible(logs_.empty());
    stop_->setVisible(logs_.empty());
    show_status();
}

/// Years of logs would take the memory that others need.
bool log_window::has_room_for(const std::vector<std::string>& files) {
    std::int64_t bytes = 0;
    for (const std::string& file : files)
        bytes += xlg::size_of_file(file);
    const std::int64_t needed = memory_of_logs(bytes);
    const std::int64_t free = free_memory_();
    if (needed <= free / 2) return true;
    tell(tr("%1 more logs would take %2 MB of memory, and %3 MB are free. Open fewer of them.")
             .arg(files.size())
             .arg(needed / 1'000'000)
             .arg(free / 1'000'000));
    return false;
}

void log_window::take_opened() {
    const std::int64_t total = std::max<std::int64_t>(loader_->total(), 1);
    progress_->setValue(static_cast<int>(1000 * loader_->done() / total));
    if (!loader_->ended()) return;
    loading_timer_.stop();
    const std::unique_ptr<log_loader> ended = std::move(loader_);
    progress_->hide();
    stop_->hide();
    const bool first = logs_.empty();
    const bool at_the_end = range_.to >= whole_.to;
    log_list more = ended->take_logs();
    // One that has just been begun is looked at again.
    std::erase_if(more, [this](const auto& log) {
        if (!log->any()) std::erase(opened_, log->name());
        return !log->any();
    });
    logs_.insert(logs_.end(), more.begin(), more.end());
    if (!more.empty()) make_lanes();
    if (first)
        show_range(whole_);
    else if (at_the_end)
        show_range({whole_.to - range_.span(), whole_.to});
    if (first) set_cursor(whole_.from + whole_.span() / 2);
    tell_failures(*ended);
    refresh();
    if (first && !views_.empty()) views_.front()->take_focus();
    if (std::exchange(ask_again_, false)) open({});
}

void log_window::tell_failures(const log_loader& ended) {
    if (!ended.failures().empty()) {
        QString words;
        for (const std::string& why : ended.failures())
            words += QString::fromStdString(why) + '\n';
        tell(tr("Some logs could not be read:\n\n%1").arg(front_of(words, 2000)));
    }
    if (ended.stopped()) tell(tr("Opening was stopped; %1 logs are open.").arg(logs_.size()));
}

std::size_t log_window::count_of_marks() const {
    std::size_t count = 0;
    for (const auto& one : lanes_)
        count += one->line.marks().size();
    return count;
}

void log_window::follow() {
    if (!following_) return;
    if (++follow_ticks_ % looks_at_folders == 0) open({}); // new files of the folders
    if (loader_ || lanes_.empty()) return;
    const bool at_the_end = range_.to >= whole_.to;
    const std::size_t marks = count_of_marks();
    bool grown = false;
    for (const auto& one : lanes_) {
        const xlg::log_seconds before = one->line.last();
        bool more = false;
        if (const auto why = attempt([&] { more = one->line.read_on(); }))
            statusBar()->showMessage(QString::fromStdString(*why), 10'000);
        if (more) one->kept.forget_from(before);
        grown = grown || more;
    }
    if (!grown) return;
    if (count_of_marks() != marks) marks_->show_lanes(lanes_);
    const std::int64_t before = whole_.to;
    whole_ = whole_range(lanes_);
    ++changes_;
    if (at_the_end && range_.span() < before - whole_.from)
        show_range({range_.from + whole_.to - before, range_.to + whole_.to - before});
    else if (at_the_end)
        show_range({range_.from, whole_.to});
    refresh_later();
}

void log_window::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void log_window::dropEvent(QDropEvent* event) {
    std::vector<std::string> names;
    for (const QUrl& url : event->mimeData()->urls())
        if (url.isLocalFile()) names.push_back(url.toLocalFile().toStdString());
    if (!names.empty()) open(names);
}

} // namespace tyxo::view
