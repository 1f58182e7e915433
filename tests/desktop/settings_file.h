#pragma once
// The settings file of a test program: it bears the name of the test's own executable, as any program's does.

#include "platform/program.h"

#include <QByteArray>
#include <QFile>
#include <QString>

namespace tyxo {

/// A settings text as the section "[tyxo]" has it, stored for this executable in the working directory.
inline bool write_settings_file(QByteArray text) {
    const QByteArray name = QByteArray::fromStdString(executable_name());
    QFile file(name + ".ini");
    return file.open(QIODevice::WriteOnly) && file.write(text.replace("[tyxo]", '[' + name + ']')) >= 0;
}

inline QByteArray settings_file() {
    QFile file(QString::fromStdString(executable_name() + ".ini"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace tyxo
