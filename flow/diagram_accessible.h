// What screen readers find of the diagram: one sentence for each node.
#pragma once

namespace amperly {

class FlowDiagram;

/// Makes diagrams known to assistive technology. To be called once or more.
void makeDiagramsAccessible();

/// The sentences of `diagram` may have changed.
void announceDiagram(FlowDiagram& diagram);

} // namespace amperly
