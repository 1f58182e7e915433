// The setup dialog under a large system font.

#include "desktop/desktop_test.h"
#include "desktop/setup_window.h"

using namespace tyxo;

class frmsetup_font_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        QFont large = QApplication::font();
        large.setPointSize(14);
        QApplication::setFont(large);
        setup_.start();
    }
    void cleanupTestCase() { setup_.end(); }

    void nothing_is_cut_off_and_all_fits_on_a_small_screen() {
        for (const bool measuring : {false, true}) {
            sensor::state.measure_running = measuring;
            setup_.open();
            QCOMPARE(setup_.dialog()->font().pointSize(), 14);
            check_dialog_size(setup_);
            setup_.close();
        }
    }

  private:
    setup_window setup_;
};

static const desktop_test<frmsetup_font_test> known;
#include "frmsetup_font_test.moc"
