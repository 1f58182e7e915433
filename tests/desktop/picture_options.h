#pragma once
// The screen and the letters that pictures of the windows are taken with.

#include <QApplication>
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QList>
#include <QMessageBox>
#include <QPushButton>
#include <QString>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTimer>

namespace tyxo {

/// `window_pictures FOLDER [WIDTHxHEIGHT [POINTS]]`; a size is that of a screen, less a desktop's bars, and
/// the windows are then taken as they open there. The environment's QT_SCALE_FACTOR scales that screen.
class picture_options {
  public:
    picture_options(int argc, char** argv) {
        valid_ = argc >= 2 && argc <= 4;
        if (!valid_) return;
        folder = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
        if (argc > 2) {
            const QList<QByteArray> sides = QByteArray(argv[2]).split('x');
            own_screen = valid_ = sides.size() == 2 && sides[0].toInt() > 0 && sides[1].toInt() > bars;
            if (valid_) screen_ = QSize(sides[0].toInt(), sides[1].toInt() - bars);
        }
        if (argc > 3) {
            points = QByteArray(argv[3]).toInt();
            valid_ = valid_ && points > 0;
        }
    }

    [[nodiscard]] bool valid() const { return valid_; }

    /// Before the application is made.
    void use_screen(const QString& usual) const {
        if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) return;
        QString description = usual;
        if (!screen_.isEmpty()) {
            description = scratch_.filePath("screen.json");
            QFile file(description);
            if (file.open(QIODevice::WriteOnly)) {
                QTextStream(&file)
                    << R"({"synchronousWindowSystemEvents": false, "screens": [{"name": "given", )"
                    << R"("x": 0, "y": 0, "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1, )"
                    << R"("width": )" << screen_.width() << R"(, "height": )" << screen_.height() << "}]}";
            }
        }
        qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + description).toLocal8Bit());
    }

    /// Behind that.
    void use_letters() const {
        if (points == 0) return;
        QFont font = QApplication::font();
        font.setPointSize(points);
        QApplication::setFont(font);
    }

    /// A picture of the box that waits for its answer during the start, and the answer.
    void answer_boxes() const {
        auto* const look = new QTimer(QApplication::instance());
        QObject::connect(look, &QTimer::timeout, look, [folder = folder] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            box->grab().save(folder + "/message-box.png");
            box->button(QMessageBox::Ok)->click();
        });
        look->start(50);
    }

    QString folder;
    bool own_screen = false;
    int points = 0; ///< 0: the letters of the desktop

  private:
    static constexpr int bars = 50; ///< a panel, and the bar with the window's title

    QSize screen_;
    QTemporaryDir scratch_;
    bool valid_ = false;
};

} // namespace tyxo
