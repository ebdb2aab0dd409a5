#include "flow/diagram_accessible.h"

#include "flow/flow_diagram.h"

#include <QAccessibleWidget>
#include <QPointer>

#include <array>
#include <memory>

namespace amperly {

namespace {

using Node = FlowDiagram::Node;

/// One node as an element of its own, though no widget stands for it.
class NodeAccessible : public QAccessibleInterface {
public:
    NodeAccessible(FlowDiagram& diagram, Node node) : m_diagram(&diagram), m_node(node) { }

    [[nodiscard]] bool isValid() const override { return m_diagram != nullptr; }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    [[nodiscard]] QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_diagram);
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::StaticText; }
    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state;
        state.readOnly = true;
        state.invisible = m_diagram == nullptr || !m_diagram->isVisible();
        return state;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        if (kind != QAccessible::Name || m_diagram == nullptr)
            return {};
        return QString::fromStdString(m_diagram->sentence(m_node));
    }
    void setText(QAccessible::Text, const QString&) override { }
    [[nodiscard]] QRect rect() const override
    {
        if (m_diagram == nullptr)
            return {};
        const QRect area = m_diagram->nodeRect(m_node);
        return {m_diagram->mapToGlobal(area.topLeft()), area.size()};
    }

private:
    QPointer<FlowDiagram> m_diagram;
    Node m_node;
};

class DiagramAccessible : public QAccessibleWidget {
public:
    explicit DiagramAccessible(FlowDiagram& diagram)
        : QAccessibleWidget(&diagram, QAccessible::Grouping, QStringLiteral("Power flow"))
    {
        // The cache of interfaces owns them.
        for (const Node node : {Node::Charger, Node::Computer, Node::Battery})
            m_nodes[static_cast<std::size_t>(node)]
                = QAccessible::registerAccessibleInterface(new NodeAccessible(diagram, node));
    }
    ~DiagramAccessible() override
    {
        for (const QAccessible::Id node : m_nodes)
            QAccessible::deleteAccessibleInterface(node);
    }
    DiagramAccessible(const DiagramAccessible&) = delete;
    DiagramAccessible& operator=(const DiagramAccessible&) = delete;

    [[nodiscard]] int childCount() const override { return static_cast<int>(m_nodes.size()); }
    [[nodiscard]] QAccessibleInterface* child(int index) const override
    {
        if (index < 0 || index >= childCount())
            return nullptr;
        return QAccessible::accessibleInterface(m_nodes[static_cast<std::size_t>(index)]);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* wanted) const override
    {
        for (int index = 0; index < childCount(); ++index) {
            if (child(index) == wanted)
                return index;
        }
        return -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override
    {
        for (int index = 0; index < childCount(); ++index) {
            if (child(index)->rect().contains(x, y))
                return child(index);
        }
        return nullptr;
    }

private:
    std::array<QAccessible::Id, FlowDiagram::kNodeCount> m_nodes{};
};

QAccessibleInterface* diagramAccessible(const QString&, QObject* object)
{
    auto* const diagram = dynamic_cast<FlowDiagram*>(object);
    return diagram == nullptr ? nullptr : new DiagramAccessible(*diagram);
}

} // namespace

void makeDiagramsAccessible()
{
    // The same factory again changes nothing.
    QAccessible::installFactory(diagramAccessible);
}

void announceDiagram(FlowDiagram& diagram)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleInterface* const group = QAccessible::queryAccessibleInterface(&diagram);
    for (int index = 0; group != nullptr && index < group->childCount(); ++index) {
        QAccessibleEvent event(group->child(index), QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace amperly
