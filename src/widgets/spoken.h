#pragma once
// What those hear who cannot see the controls that paint themselves.
//
// Values are read when somebody asks, they are not told by themselves: needles move ten times a second, and
// no ear could follow. What nobody may miss is said by an `announcer`.

#include <QAccessible>
#include <QString>
#include <QWidget>

#include <optional>

namespace tyxo {

/// Implemented by a widget, behind QWidget. One with a signal `clicked()` can be pressed where the Tab key
/// reaches it.
class spoken_control {
  public:
    struct scale {
        double least;
        double now;
        double greatest;
    };

    /// What it is. Listeners know no lamps and digits: those are texts.
    [[nodiscard]] virtual QAccessible::Role spoken_role() const = 0;

    /// The value with its unit, or in words what the picture shows.
    [[nodiscard]] virtual QString spoken_text() const { return {}; }

    [[nodiscard]] virtual std::optional<scale> spoken_scale() const { return {}; }

  protected:
    /// The description that listeners have kept is out of date; they ask anew. For a summary, when its
    /// picture gets the focus.
    static void renew_description(QWidget& widget);

    spoken_control();
    ~spoken_control() = default;
};

/// Says something at once, wherever the keyboard and the reader are. Nothing is seen of it.
class announcer : public QWidget, public spoken_control {
  public:
    explicit announcer(QWidget* parent);

    void say(const QString& what);

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Notification; }
};

} // namespace tyxo
