#pragma once

#include <zeltools/declarativestatemachine/statemachinedescription.h>

namespace zeltools::declarativestatemachine
{

class DescriptionIndex;
class PictureMarks;

/// The texts of a picture, written for Graphviz.
namespace dotlabels
{

/// The text as a label in quotes. Line feeds stay; other control characters become their symbols.
QString quoted(QString text);

/// The description, trigger, guard and action of a transition and how often it has fired:
/// "too little\nafter 20 ms [guard]\n3x".
QString labelOf(const TransitionDescription& transition, const QString& timesFired);

/// The name of a state with its marks, its time limit and its transitions without a target, which
/// have no arrow.
QString labelOf(const DescriptionIndex& index, int state, const PictureMarks& marks);

} // namespace dotlabels

} // namespace zeltools::declarativestatemachine
