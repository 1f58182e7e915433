#pragma once
// The files of a test program. Its settings file bears the name of the test's own executable, as any
// program's does.

#include "platform/desktop/output_file.h"
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

/// What the file holds when the disk has taken all that was written. Empty when there is no such file.
inline QByteArray written_file(const QString& path) {
    using std::chrono_literals::operator""s;
    if (!desktop::finish_files(10s)) qFatal("the disk has not taken everything within 10 s");
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline QByteArray settings_file() {
    return written_file(QString::fromStdString(executable_name() + ".ini"));
}

} // namespace tyxo
