// The picture of a drawing surface: painted step by step it is the one that is painted at once.

#include "desktop/desktop_test.h"
#include "desktop/random_steps.h"
#include "widgets/plots/canvas_picture_view.h"

#include <QTest>

#include <vector>

using namespace tyxo;

class canvas_picture_test : public QObject {
    Q_OBJECT

  private slots:
    void every_step_leaves_what_is_painted_at_once_data() {
        QTest::addColumn<unsigned>("seed");
        QTest::addColumn<double>("ratio");
        for (unsigned seed = 1; seed <= 4; ++seed)
            for (const double ratio : {1.0, 1.5, 2.0})
                QTest::addRow("seed %u, ratio %g", seed, ratio) << seed << ratio;
    }

    void every_step_leaves_what_is_painted_at_once() {
        QFETCH(const unsigned, seed);
        QFETCH(const double, ratio);
        steps_ = random_steps(seed);
        surface_.clear();
        elements_.clear();
        texts_.clear();
        canvas_look look{{201, 119}, ratio, {10, 5}, 0.6, QColor(192, 192, 192), QFont("DejaVu Sans", 7)};
        canvas_picture picture;
        for (int step = 0; step < 250; ++step) {
            if (steps_.below(100) == 0) change(look);
            draw();
            const QImage before = picture.image();
            const QRegion area = picture.renew(surface_, look);
            canvas_picture at_once;
            at_once.renew(surface_, look);
            const QByteArray message = QByteArray::number(step);
            QVERIFY2(same_pixels(picture.image(), at_once.image()), message);
            QVERIFY2(same_outside(before, picture.image(), area), message);
        }
    }

    void it_knows_what_it_shows() {
        const canvas_look look{{200, 100}, 1, {}, 1, QColor(192, 192, 192), QFont()};
        canvas_picture picture;
        surface_.line(10, 10, 50, 60);
        QVERIFY(!picture.shows(surface_, look));
        picture.renew(surface_, look);
        QVERIFY(picture.shows(surface_, look));
        surface_.line(10, 10, 60, 50);
        QVERIFY(!picture.shows(surface_, look));
        picture.renew(surface_, look);
        canvas_look other = look;
        other.unit = 2;
        QVERIFY(!picture.shows(surface_, other));
    }

    void a_new_curve_paints_nothing_that_lies_elsewhere() {
        const canvas_look look{{400, 100}, 1, {}, 1, QColor(192, 192, 192), QFont()};
        canvas_picture picture;
        for (const double height : {70, 60, 50, 40}) {
            surface_.clear();
            surface_.ForeColor = rgb(0, 0, 0);
            surface_.line(5, 5, 190, 90); // the same each time
            surface_.ForeColor = rgb(255, 0, 0);
            surface_.line(250, height, 390, 20);
            const QRegion area = picture.renew(surface_, look);
            if (height <= 50) QVERIFY(area.boundingRect().left() > 240);
        }
    }

  private:
    struct element {
        colour color;
        std::vector<QPointF> points;
        bool operator==(const element&) const = default;
    };

    element some_element() {
        element result{steps_.one_of({rgb(255, 255, 0), rgb(0, 0, 0), rgb(255, 0, 0), rgb(0, 0, 255)}), {}};
        const QPointF begin(steps_.below(320), steps_.below(180));
        for (int count = 2 + steps_.below(10); count > 0; --count)
            result.points.push_back(begin + QPointF(steps_.below(60), steps_.below(60)));
        if (steps_.below(8) == 0) result.points.push_back({steps_.wild(), steps_.wild()});
        return result;
    }

    /// Often a few ends, as curves do.
    void draw() {
        const auto most = static_cast<int>(elements_.size());
        const int kept =
            steps_.below(4) == 0 ? steps_.below(most + 1) : std::min(most, steps_.one_of({3, 5}));
        elements_.resize(static_cast<std::size_t>(kept));
        for (int count = steps_.below(8 - std::min(kept, 7)); count >= 0; --count)
            elements_.push_back(some_element());
        if (steps_.below(4) == 0) elements_.resize(static_cast<std::size_t>(kept));
        surface_.clear();
        for (const element& one : elements_) {
            surface_.ForeColor = one.color;
            for (std::size_t k = 1; k < one.points.size(); ++k)
                surface_.line(one.points[k - 1].x(), one.points[k - 1].y(), one.points[k].x(),
                              one.points[k].y());
        }
        if (steps_.below(8) == 0) texts_.clear();
        if (steps_.below(4) == 0)
            texts_.push_back({steps_.wild(), steps_.wild(), steps_.one_of({"legend", "", "Wij"}), 255});
        surface_.texts = texts_;
    }

    void change(canvas_look& look) {
        switch (steps_.below(4)) {
        case 0:
            look.size = {150 + steps_.below(100), 80 + steps_.below(60)};
            break;
        case 1:
            look.unit = 0.3 + steps_.below(10) / 7.0;
            break;
        case 2:
            look.ground = steps_.one_of({QColor(Qt::white), QColor(192, 192, 192)});
            break;
        default:
            look.text_font = steps_.font();
        }
    }

    static bool same_outside(const QImage& before, const QImage& now, const QRegion& area) {
        if (before.size() != now.size()) return true;
        QImage masked = before;
        QPainter painter(&masked);
        painter.setClipRegion(area);
        painter.drawImage(0, 0, now);
        painter.end();
        return same_pixels(masked, now);
    }

    random_steps steps_{0};
    canvas surface_;
    std::vector<element> elements_;
    std::vector<canvas_text> texts_;
};

static const desktop_test<canvas_picture_test> known;
#include "canvas_picture_test.moc"
