// What screen readers find of the diagram: one sentence for each node.
#pragma once

namespace amperly {

class FlowDiagram;

/// From now on assistive technology is told of diagrams. To be called once or more.
void makeDiagramsAccessible();

/// The sentences of `diagram` may have changed.
void announceDiagram(FlowDiagram& diagram);

} // namespace amperly
