#include "dialogs/setup/frmsetup_view.h"

#include "dialogs/setup/frmsetup.h"
#include "dialogs/setup/frmsetup_rows_view.h"
#include "dialogs/setup/frmsetup_sensor_view.h"
#include "platform/desktop/handlers.h"
#include "widgets/screen_room.h"
#include "widgets/show.h"

#include <QBoxLayout>
#include <QPushButton>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>

namespace tyxo {

namespace {

constexpr QSize usual_setup_size(1140, 690);      // and more with a large font
constexpr int page_rim = 40;                      // px, around a page
constexpr QRgb setup_disabled_print = 0xFF4A5056; // locked settings are there to be read
constexpr QRgb disabled_tab = 0xFF666A6E;         // lighter: these tabs have nothing to read

} // namespace

frmsetup_view::frmsetup_view(QWidget* parent)
    : modal_dialog(parent, "frmSetup", frmSetup::state.form, frmSetup::cmd_cancel_click) {
    set_disabled_print(*this, setup_disabled_print);
    auto* const rows = new QVBoxLayout(this);
    make_tabs(*rows);
    make_buttons(*rows);
    fit_screen();
}

/// As large as its pages ask for, as far as the screen has room.
void frmsetup_view::fit_screen() {
    // Captions of tabs widen nothing, they give way.
    const QSize around(page_rim,
                       page_rim + SSTab->tabBar()->sizeHint().height() + cmd_OK->sizeHint().height());
    QSize wanted;
    for (const QWidget* page : pages_)
        wanted = wanted.expandedTo(page->minimumSizeHint() + around);
    resize(size().expandedTo(usual_setup_size).expandedTo(wanted).boundedTo(screen_room(*this)));
}

void frmsetup_view::make_tabs(QVBoxLayout& place) {
    SSTab = new QTabWidget(this);
    SSTab->setObjectName("SSTab");
    place.addWidget(SSTab, 1);
    settings_ = new settings_page(SSTab);
    add_page(settings_);
    for (i16 channel = 0; channel < channel_count; ++channel) {
        auto* const page = new sensor_page(channel, SSTab);
        add_page(page);
        sensors_[channel] = page;
    }
    QTabBar* const bar = SSTab->tabBar();
    bar->setUsesScrollButtons(false); // captions give way, each as little as it must
    bar->setElideMode(Qt::ElideRight);
    bar->setAccessibleName(tr("Settings and sensors"));
    QPalette colours = palette();
    colours.setColor(QPalette::Disabled, QPalette::WindowText, QColor(disabled_tab));
    bar->setPalette(colours);
    connect(SSTab, &QTabWidget::currentChanged, this, [](int tab) {
        desktop::run_handler(desktop::source::view, [tab] { frmSetup::SSTab_click(static_cast<i16>(tab)); });
    });
}

void frmsetup_view::add_page(QWidget* page) {
    SSTab->addTab(new scroll_page(page), {});
    pages_.push_back(page);
}

void frmsetup_view::make_buttons(QVBoxLayout& place) {
    auto* const line = new QHBoxLayout;
    place.addLayout(line);
    line->addStretch();
    cmd_OK = add_button("cmd_OK", frmSetup::state.cmd_OK, frmSetup::cmd_OK_click, true, *line);
    add_button("cmd_cancel", frmSetup::state.cmd_cancel, frmSetup::cmd_cancel_click, false, *line);
    add_button("cmd_Refresh", frmSetup::state.cmd_Refresh, frmSetup::cmd_Refresh_click, false, *line);
}

void frmsetup_view::show_tabs() {
    const QSignalBlocker nobody_chose(SSTab);
    for (int tab = 0; tab < SSTab->count(); ++tab) {
        const auto index = static_cast<std::size_t>(tab);
        const QString caption = qt_text(frmSetup::state.SSTab.TabCaption[index]);
        const QString text = without_mnemonic(caption);
        if (SSTab->tabText(tab) != text) SSTab->setTabText(tab, text);
        SSTab->setTabEnabled(tab, frmSetup::state.SSTab.TabEnabled[index]);
    }
    // Last, as a tab that gets disabled leaves the front; the one of a silent Evaluator may stand there.
    SSTab->setCurrentIndex(frmSetup::state.SSTab.Tab);
}

/// A caption that is cut off is told by a tool tip.
void frmsetup_view::show_tab_tips() {
    const QTabBar& bar = *SSTab->tabBar();
    const int rim = bar.style()->pixelMetric(QStyle::PM_TabBarTabHSpace, nullptr, &bar);
    for (int tab = 0; tab < SSTab->count(); ++tab) {
        const QString caption = qt_text(frmSetup::state.SSTab.TabCaption[static_cast<std::size_t>(tab)]);
        const bool whole = bar.fontMetrics().horizontalAdvance(caption) + rim <= bar.tabRect(tab).width();
        SSTab->setTabToolTip(tab, whole ? QString() : tool_tip(caption));
    }
}

void frmsetup_view::show_state() {
    if (!frmSetup::state.form.Visible && !isVisible()) return; // filled when it is opened
    settings_->show_state();
    for (sensor_page* sensor : sensors_)
        sensor->show_state();
    show_bound();
    show_tabs();
    if (opens()) {
        fit_screen();
        SSTab->tabBar()->setFocus(); // not where a key or the wheel changes something at once
    }
    show_form();
    show_tab_tips();
}

} // namespace tyxo

#include "moc_frmsetup_view.cpp"
