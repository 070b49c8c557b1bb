#include "quick/layeredlayout_p.h"

#include <algorithm>
#include <cmath>

namespace zeltools::quick
{

LayeredLayout::LayeredLayout(const LayeredGraph& graph)
    : m_graph(graph)
    , m_centres(graph.cells().size())
{
    constexpr size_t manyCells = 10000;
    const int sweeps = graph.cells().size() > manyCells ? 3 : 10;
    placeInRows();
    for (int i = 0; i < sweeps; ++i) {
        improve(true, false);
        improve(false, true);
    }
    for (int i = 0; i < sweeps; ++i)
        improve(true, true);
    improve(false, true); // so that an initial dot is exactly above its state
    moveToOrigin();
    stackRows();
}

void LayeredLayout::placeInRows()
{
    for (const std::vector<int>& row : m_graph.rows()) {
        for (size_t i = 1; i < row.size(); ++i)
            m_centres[size_t(row[i])] =
                m_centres[size_t(row[i - 1])] + distance(row[i - 1], row[i]);
    }
}

double LayeredLayout::distance(int left, int right) const
{
    constexpr double betweenItems = 28;
    constexpr double betweenEdges = 14;
    const LayeredGraph::Cell& first = m_graph.cells()[size_t(left)];
    const LayeredGraph::Cell& second = m_graph.cells()[size_t(right)];
    const bool isOfItems = first.item >= 0 && second.item >= 0;
    return first.after + second.before + (isOfItems ? betweenItems : betweenEdges);
}

void LayeredLayout::improve(bool usesAbove, bool usesBeneath)
{
    const std::vector<std::vector<int>>& rows = m_graph.rows();
    if (usesAbove) {
        for (const std::vector<int>& row : rows)
            improveRow(row, usesAbove, usesBeneath);
        return;
    }
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        improveRow(*row, usesAbove, usesBeneath);
}

// Each cell wants to be where its links are straight. Long edges want it most.
void LayeredLayout::improveRow(const std::vector<int>& row, bool usesAbove, bool usesBeneath)
{
    const std::vector<LayeredGraph::Cell>& cells = m_graph.cells();
    std::vector<double> wishes;
    std::vector<double> weights;
    for (int number : row) {
        const LayeredGraph::Cell& cell = cells[size_t(number)];
        double weight = 0;
        double sum = 0;
        const auto add = [&](int other, double place) {
            const bool isItem = cells[size_t(other)].item >= 0;
            const double each = isItem && cell.item >= 0 ? 1 : isItem || cell.item >= 0 ? 2 : 8;
            weight += each;
            sum += each * place;
        };
        for (size_t i = 0; usesAbove && i < cell.above.size(); ++i) {
            const LayeredGraph::Link& link = m_graph.links()[size_t(cell.above[i])];
            add(link.upper, m_centres[size_t(link.upper)] + link.upperOffset - link.lowerOffset);
        }
        for (size_t i = 0; usesBeneath && i < cell.beneath.size(); ++i) {
            const LayeredGraph::Link& link = m_graph.links()[size_t(cell.beneath[i])];
            add(link.lower, m_centres[size_t(link.lower)] + link.lowerOffset - link.upperOffset);
        }
        wishes.push_back(weight > 0 ? sum / weight : m_centres[size_t(number)]);
        weights.push_back(weight > 0 ? weight : 0.1);
    }
    settle(row, wishes, weights);
}

// The places that are nearest to the wishes (by the sum of the weighted squares) and keep the
// order and the distances: cells that are too near to each other form blocks.
void LayeredLayout::settle(const std::vector<int>& row, const std::vector<double>& wishes,
                           const std::vector<double>& weights)
{
    struct Block
    {
        double place;
        double weight;
        size_t end;
    };
    std::vector<Block> blocks;
    std::vector<double> offsets(row.size());
    for (size_t i = 0; i < row.size(); ++i) {
        offsets[i] = i == 0 ? 0 : offsets[i - 1] + distance(row[i - 1], row[i]);
        blocks.push_back({wishes[i] - offsets[i], weights[i], i + 1});
        while (blocks.size() > 1 && blocks[blocks.size() - 2].place > blocks.back().place) {
            const Block last = blocks.back();
            blocks.pop_back();
            Block& block = blocks.back();
            const double weight = block.weight + last.weight;
            block = {(block.place * block.weight + last.place * last.weight) / weight, weight,
                     last.end};
        }
    }
    size_t i = 0;
    for (const Block& block : blocks) {
        for (; i < block.end; ++i)
            m_centres[size_t(row[i])] = block.place + offsets[i];
    }
}

void LayeredLayout::moveToOrigin()
{
    double least = 0;
    double most = 0;
    for (size_t i = 0; i < m_centres.size(); ++i) {
        const LayeredGraph::Cell& cell = m_graph.cells()[i];
        least = i == 0 ? m_centres[i] - cell.before : std::min(least, m_centres[i] - cell.before);
        most = i == 0 ? m_centres[i] + cell.after : std::max(most, m_centres[i] + cell.after);
    }
    for (double& centre : m_centres)
        centre = std::round(centre - least);
    m_breadth = std::ceil(most - least) + 1;
}

void LayeredLayout::stackRows()
{
    double top = 0;
    for (const std::vector<int>& row : m_graph.rows()) {
        double depth = 0;
        for (int number : row)
            depth = std::max(depth, m_graph.cells()[size_t(number)].depth);
        m_tops.push_back(top);
        m_bottoms.push_back(top + depth);
        m_depth = top + depth;
        top += depth + gapBelow(row);
    }
}

// Edges that lead far to the side need room to do it.
double LayeredLayout::gapBelow(const std::vector<int>& row) const
{
    constexpr double least = 20;
    constexpr double most = 60;
    double widest = 0;
    for (int number : row) {
        for (int link : m_graph.cells()[size_t(number)].beneath) {
            const LayeredGraph::Link& each = m_graph.links()[size_t(link)];
            const double change = m_centres[size_t(each.upper)] + each.upperOffset -
                                  m_centres[size_t(each.lower)] - each.lowerOffset;
            widest = std::max(widest, std::abs(change));
        }
    }
    return std::round(std::clamp(least + widest / 10, least, most));
}

double LayeredLayout::middleOf(int item) const
{
    const size_t row = size_t(m_graph.cells()[size_t(item)].row);
    return (m_tops[row] + m_bottoms[row]) / 2;
}

LayeredLayout::Edge LayeredLayout::edge(int number) const
{
    Edge edge;
    const std::vector<int>& path = m_graph.cellsOf(number);
    int link = m_graph.firstLinkOf(number);
    for (size_t i = 0; i < path.size(); ++i) {
        const LayeredGraph::Cell& cell = m_graph.cells()[size_t(path[i])];
        const double centre = m_centres[size_t(path[i])];
        const double top = m_tops[size_t(cell.row)];
        const double bottom = m_bottoms[size_t(cell.row)];
        const double middle = (top + bottom) / 2;
        if (i > 0) {
            const double x = centre + m_graph.links()[size_t(link)].lowerOffset;
            ++link;
            edge.points.append({x, top});
            if (cell.item >= 0)
                edge.points.append({x, middle - cell.depth / 2});
        }
        if (i + 1 < path.size()) {
            const double x = centre + m_graph.links()[size_t(link)].upperOffset;
            if (cell.item >= 0)
                edge.points.append({x, middle + cell.depth / 2});
            edge.points.append({x, bottom});
        }
        if (cell.isLabel)
            edge.label = {centre, middle};
    }
    return edge;
}

} // namespace zeltools::quick
