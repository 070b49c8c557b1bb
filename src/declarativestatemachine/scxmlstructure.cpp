#include "declarativestatemachine/scxmlstructure_p.h"

#include <algorithm>

namespace zeltools::declarativestatemachine
{

namespace
{

using State = ScxmlDocument::State;

class Arranger
{
public:
    Arranger(const ScxmlDocument& document, QString& error)
        : m_states(document.states)
        , m_error(error)
    {
        m_structure.children.resize(m_states.size());
    }

    std::optional<ScxmlStructure> arrange()
    {
        if (!addStates() || !orderStates())
            return std::nullopt;
        return std::move(m_structure);
    }

private:
    const State& state(int number) const { return m_states[size_t(number)]; }
    std::vector<int>& childrenOf(int number) { return m_structure.children[size_t(number)]; }

    bool fail(const State& state, const QString& reason)
    {
        m_error = QStringLiteral("line %1: ").arg(state.line) + reason;
        return false;
    }

    bool addStates()
    {
        for (int i = 1; i < int(m_states.size()); ++i) {
            if (m_structure.numbers.contains(state(i).id))
                return fail(state(i),
                            QStringLiteral("two states have the id \"%1\"").arg(state(i).id));
            m_structure.numbers.insert(state(i).id, i);
            childrenOf(state(i).parent).push_back(i);
        }
        return true;
    }

    bool orderStates()
    {
        for (int i = 0; i < int(m_states.size()); ++i) {
            if (!putInitialStateFirst(i))
                return false;
        }
        if (!putFinalStateLast())
            return false;
        std::vector<int> open{0};
        while (!open.empty()) { // in the order of the description
            const int number = open.back();
            open.pop_back();
            open.insert(open.end(), childrenOf(number).rbegin(), childrenOf(number).rend());
            if (number > 0)
                m_structure.lastOfName.insert(state(number).name, number);
        }
        return true;
    }

    bool putInitialStateFirst(int parent)
    {
        const State& around = state(parent);
        std::vector<int>& children = childrenOf(parent);
        const auto first = std::find_if(children.begin(), children.end(),
                                        [this](int child) { return !state(child).isHistory(); });
        if (first == children.end() && (parent == 0 || !children.empty()))
            return fail(around, QStringLiteral("there is no state that can be entered"));
        if (around.initial.isNull())
            return true;
        const int initial = m_structure.numbers.value(around.initial, -1);
        if (initial < 0 || state(initial).parent != parent || state(initial).isHistory())
            return fail(
                around,
                QStringLiteral("the initial state \"%1\" is not a child").arg(around.initial));
        if (*first != initial) {
            const auto place = std::find(children.begin(), children.end(), initial);
            std::rotate(children.begin(), place, place + 1);
        }
        return true;
    }

    // The initial state is final only where it is the only one.
    bool putFinalStateLast()
    {
        std::vector<int>& children = childrenOf(0);
        const auto last = std::find_if(children.rbegin(), children.rend() - 1, [this](int child) {
            return state(child).kind == StateDescription::Final;
        });
        if (last == children.rend() - 1)
            return children.size() == 1 ||
                   fail(state(0), QStringLiteral("the machine has no <final> to end with"));
        std::rotate(last.base() - 1, last.base(), children.end());
        return true;
    }

    const std::vector<State>& m_states;
    QString& m_error;
    ScxmlStructure m_structure;
};

} // namespace

std::optional<ScxmlStructure> ScxmlStructure::of(const ScxmlDocument& document, QString& error)
{
    return Arranger(document, error).arrange();
}

} // namespace zeltools::declarativestatemachine
