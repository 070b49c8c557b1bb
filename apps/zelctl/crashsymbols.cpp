#include "crashsymbols.h"

#include "addressnames.h"

#include <QDeadlineTimer>

using zeltools::CrashReport;

namespace
{

/// The first address of a stack is that of the instruction that was running, the others are return
/// addresses: after a call that never returns, another function may begin there.
quint64 callAddress(const CrashReport::Stack& stack, int index)
{
    const quint64 address = stack.calls.at(index);
    return index == 0 || address == 0 ? address : address - 1;
}

} // namespace

CrashSymbols::CrashSymbols(const CrashReport& report, const QString& folder)
    : m_report(report)
{
    const SymbolFiles files(folder, report.modules);
    std::map<QString, Addresses> addresses; // by file
    for (const CrashReport::Stack& stack : report.stacks) {
        for (int i = 0; i < stack.calls.size(); ++i) {
            const quint64 address = callAddress(stack, i);
            const CrashReport::Module* const module = report.moduleAt(address);
            if (module == nullptr)
                continue;
            auto symbols = m_symbols.find(module);
            if (symbols == m_symbols.end())
                symbols = m_symbols.emplace(module, files.find(*module)).first;
            if (!symbols->second.path.isEmpty())
                addresses[symbols->second.path][address - module->base].insert(address);
        }
    }
    const QDeadlineTimer end(std::chrono::minutes(2));
    for (const auto& [file, itsAddresses] : addresses)
        addNames(file, itsAddresses, std::chrono::milliseconds(end.remainingTime()));
}

void CrashSymbols::addNames(const QString& file, const Addresses& addresses,
                            std::chrono::milliseconds patience)
{
    QVector<quint64> inFile;
    for (const auto& [address, places] : addresses)
        inFile.append(address);
    QString error;
    const QVector<QStringList> names = addressNames(file, inFile, patience, error);
    if (m_error.isEmpty())
        m_error = error;
    for (int i = 0; i < names.size(); ++i) {
        for (const quint64 address : addresses.at(inFile[i]))
            m_functions.insert(address, names[i]);
    }
}

QVector<CrashSymbols::Call> CrashSymbols::calls(const CrashReport::Stack& stack) const
{
    QVector<Call> calls;
    for (int i = 0; i < stack.calls.size(); ++i) {
        const quint64 address = callAddress(stack, i);
        calls.append({address, m_report.moduleAt(address), m_functions.value(address)});
    }
    return calls;
}

QString CrashSymbols::source(const CrashReport::Module& module) const
{
    const auto found = m_symbols.find(&module);
    if (found == m_symbols.end())
        return QString();
    return found->second.path.isEmpty() ? found->second.obstacle : found->second.path;
}
