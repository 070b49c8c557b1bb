#pragma once

#include <QByteArray>
#include <QString>

/// Reads the build id of a program, a library or a file with their symbols: the bytes by which the
/// linker marks each of its outputs, and which the file with the symbols keeps. The result is empty
/// if the file has no build id, cannot be read, or is not a little-endian ELF file. Any file is
/// safe to read: little memory is used, and pipes and devices are not opened.
QByteArray readBuildId(const QString& path);
