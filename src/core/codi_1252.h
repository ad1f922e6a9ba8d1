#pragma once
// Windows-1252, the "ANSI" code page in which Windows editors (Notepad before 2019 among them) save
// a text file in western Europe. Settings files edited on an office PC arrive in it; they are read
// and written back in it, byte for byte, so that the other editor still reads them.

#include <QByteArray>
#include <QString>

// True when the bytes are valid UTF-8 (plain ASCII is).
bool esUtf8(const QByteArray &bytes);
// Windows-1252 bytes as text. The five bytes the code page leaves unassigned stand for the control
// characters of the same number, as Windows reads them, so that they are written back unchanged.
QString text1252(const QByteArray &bytes);
// Whether every character of the text has a Windows-1252 byte.
bool es1252(const QString &text);
// The text in Windows-1252; a character without a byte becomes '?'.
QByteArray a1252(const QString &text);
