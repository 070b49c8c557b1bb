#include "logging/losscounts_p.h"

#include "logging/logmodule.h"
#include "logging/logrenderer.h"

#include <QStringList>
#include <QtAlgorithms>

namespace
{

QString moduleName(size_t id)
{
    const QVector<LogModule*>& modules = LogModule::registeredModulesConst();
    for (const LogModule* module : modules) {
        if (module->id() == id)
            return module->name();
    }
    return QStringLiteral("others");
}

LossCounts::Counts difference(LossCounts::Counts counts, const LossCounts::Counts& told)
{
    for (size_t level = 0; level < counts.size(); ++level) {
        for (size_t module = 0; module < counts[level].size(); ++module)
            counts[level][module] -= told[level][module];
    }
    return counts;
}

QString counted(const QString& name, quint64 lines)
{
    return QStringLiteral("%1 %2").arg(name).arg(lines);
}

} // namespace

void LossCounts::add(LogLevel::Level level, quint64 moduleBits)
{
    const size_t module = moduleBits != 0 ? qCountTrailingZeroBits(moduleBits) : modulesCount - 1;
    m_lost[size_t(level) < levelsCount ? level : LogLevel::Info][module].fetch_add(1);
}

LossCounts::Counts LossCounts::lost() const
{
    Counts counts;
    for (size_t level = 0; level < levelsCount; ++level) {
        for (size_t module = 0; module < modulesCount; ++module)
            counts[level][module] = m_lost[level][module].load();
    }
    return counts;
}

void LossCounts::continueFrom(const LossCounts& earlier)
{
    const Counts lost = earlier.lost();
    for (size_t level = 0; level < levelsCount; ++level) {
        for (size_t module = 0; module < modulesCount; ++module)
            m_lost[level][module] = lost[level][module];
    }
    m_told = earlier.m_told;
}

LogLosses LossCounts::losses(const Counts& lost)
{
    LogLosses losses;
    for (size_t level = 0; level < levelsCount; ++level) {
        for (size_t module = 0; module < modulesCount; ++module) {
            const quint64 lines = lost[level][module];
            if (lines == 0)
                continue;
            losses.total += lines;
            losses.lines[LogLevel::Level(level)][moduleName(module)] += lines;
        }
    }
    return losses;
}

QString LossCounts::text(const Counts& lost, qint64 process) const
{
    const LogLosses recent = losses(difference(lost, m_told));
    QStringList levels;
    for (auto level = recent.lines.cbegin(); level != recent.lines.cend(); ++level) {
        QStringList modules;
        quint64 total = 0;
        for (auto module = level->cbegin(); module != level->cend(); ++module) {
            modules.append(counted(module.key(), module.value()));
            total += module.value();
        }
        levels.append(counted(LogRenderer::levelToString(level.key()).trimmed(), total) +
                      QStringLiteral(" (%1)").arg(modules.join(QStringLiteral(", "))));
    }
    return QStringLiteral("%1 lines were lost (%2 since the start of process %3): %4")
        .arg(recent.total)
        .arg(losses(lost).total)
        .arg(process)
        .arg(levels.join(QStringLiteral(", ")));
}
