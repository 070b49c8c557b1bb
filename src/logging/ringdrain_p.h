#pragma once

#include "logging/ringfile_p.h"

#include <QVarLengthArray>

class RotatingLogFile;
class SinkList;

/// The log files that a ring has lines for, by their places in RingHeader::files.
class RingTargets
{
public:
    virtual ~RingTargets();

    /// The file, or null if it takes no lines now.
    virtual RotatingLogFile* file(int place) = 0;
    /// Appends whole lines to the file. Returns false if they are not in it.
    virtual bool write(int place, const char* lines, qint64 size, bool isUrgent) = 0;
};

/// Delivers the lines of a ring in their order: to standard error, to the log files and to the
/// sinks. It is the consumer of the ring, so only one thread may use it.
///
/// Neighbouring lines for the same places are written in one piece, as far as they fit into the
/// file, so that the files rotate as if each line were written alone.
class RingDrain
{
public:
    enum class Result { Delivered, Nothing, Damage };

    RingDrain(RingFile& ring, RingTargets& targets, SinkList& sinks);

    /// Delivers the next lines of a ring in use.
    Result deliverNext();

    /// Delivers the next lines of an abandoned ring. Returns false if there are none, or if a file
    /// does not take its lines, which stay in the ring then.
    bool deliverAbandoned();

private:
    using Ring = LineRing<>;
    static constexpr int s_batchSize_B = 4096; // a larger write to a pipe may be cut by others

    struct Batch
    {
        quint64 begin = 0;
        quint64 end = 0;
        RingLine line = {}; // the first one
        bool isUrgent = false;
        QVarLengthArray<char, s_batchSize_B> text;
    };

    template <typename Find>
    bool gather(Batch& batch, const Find& find);
    template <typename Find>
    void writeToSinks(const Batch& batch, const Find& find);
    void print(const Batch& batch);
    bool writeToFile(const Batch& batch);
    qint64 room_B(int place);

    RingFile& m_ring;
    Ring m_lines;
    RingTargets& m_targets;
    SinkList& m_sinks;
};
