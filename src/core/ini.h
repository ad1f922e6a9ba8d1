#pragma once
// The settings-file primitives, with the semantics of the classic private-profile functions:
// section and key names compare without regard to case, a missing file or key or an empty value
// reads as the default, a value is cut to 199 characters and a section to 1000 characters.
// A file is UTF-8 when its bytes are, Windows-1252 otherwise (saved by a Windows editor). Writing
// keeps every other line byte for byte (comments, spacing, order, line ends, encoding), writes the
// new line in the file's encoding and with its line end, and replaces the file atomically.

#include <QString>

QString LlegirIni(const QString &file, const QString &section, const QString &key, const QString &defaultValue);
// Returns true on success; false when the file could not be written.
bool EscriureIni(const QString &file, const QString &section, const QString &key, const QString &value);
// Every line of the section as "key=value" (or the line as it stands), each followed by one NUL.
QString LlegirSeccioIni(const QString &file, const QString &section);
