#pragma once
// Ticks of an axis of the plot library at places of our own.

#include <qcustomplot.h>

#include <QString>
#include <QVector>

namespace tyxo {

/// Ticks that are given, not computed.
class given_ticks : public QCPAxisTicker {
  public:
    QVector<double> major;
    QVector<double> minor;
    QVector<QString> labels;

    void generate(const QCPRange& /*range*/, const QLocale& /*locale*/, QChar /*format*/, int /*precision*/,
                  QVector<double>& ticks, QVector<double>* sub_ticks,
                  QVector<QString>* tick_labels) override {
        ticks = major;
        if (sub_ticks != nullptr) *sub_ticks = minor;
        if (tick_labels != nullptr) *tick_labels = labels;
    }

    void clear() {
        major.clear();
        minor.clear();
        labels.clear();
    }
};

} // namespace tyxo
