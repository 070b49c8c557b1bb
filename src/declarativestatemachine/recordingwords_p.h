#pragma once

#include "quotedwords.h"

#include <zeltools/declarativestatemachine/machinerecording.h>

namespace zeltools::declarativestatemachine
{

/// The words of a line of a recording, which are taken one after another. A function that cannot
/// take its word returns false, and fault() says where and why.
class RecordingWords
{
public:
    explicit RecordingWords(QVector<QuotedWord> words = {});

    bool isAt(const char* bare) const;
    /// Takes the word if it is there.
    bool skip(const char* bare);
    bool take(const char* bare);
    bool takeText(QString& text);
    bool takeNumber(qint64& number, qint64 least, qint64 most);
    bool takeTime(std::chrono::microseconds& time, std::chrono::microseconds earliest);
    bool takeStart(QDateTime& start);
    bool takeState(MachineRecording::State& state);
    bool takeTransition(MachineRecording::Entry& entry);
    bool takeArguments(QVector<MachineRecording::Argument>& arguments);
    bool takeEnd();
    /// The line does not have what is expected at the next word.
    bool fail(const QString& expected);

    QString fault() const;

private:
    bool isAtEnd() const { return m_next == m_words.size(); }
    bool isAtBare() const { return !isAtEnd() && !m_words[m_next].isQuoted; }
    bool isAtQuoted() const { return !isAtEnd() && m_words[m_next].isQuoted; }

    QVector<QuotedWord> m_words;
    int m_next = 0;
    QString m_expected;
};

} // namespace zeltools::declarativestatemachine
