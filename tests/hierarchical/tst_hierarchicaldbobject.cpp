#include "hierarchical/hierarchicaldbobject.h"
#include "support.h"

#include <QtTest>

#include <memory>

namespace
{

/// A node that records its signals and hooks. The hook does what a test wants.
class Node : public tools::HierarchicalDbObject
{
public:
    Node(const char* name, QStringList& journal)
        : m_journal(journal)
    {
        setObjectName(name);
        connect(this, &Node::modifiedChanged,
                [=](bool isModified) { m_journal += name + QString(isModified ? "+" : "-"); });
        connect(this, &Node::childrenChanged, [=] { m_journal += name + QString("*"); });
    }
    Node* add(const char* name)
    {
        auto* node = new Node(name, m_journal);
        addChild(node);
        return node;
    }
    std::function<bool()> hook = [] { return true; };

protected:
    bool commitSelf() override { return call("commit"); }
    bool revertSelf() override { return call("revert"); }

private:
    bool call(const char* name)
    {
        m_journal += name + (' ' + objectName());
        return std::function<bool()>(hook)(); // a copy, since the hook may delete this
    }

    QStringList& m_journal;
};

} // namespace

class TestHierarchicalDbObject : public QObject
{
    Q_OBJECT

    QStringList m_journal;
    std::unique_ptr<Node> m_root;
    Node *m_a = nullptr, *m_b = nullptr, *m_leaf = nullptr; // root has a and b, a has leaf

    QString journal() { return std::exchange(m_journal, {}).join(' '); }
    QString names()
    {
        QString names;
        m_root->walk([&](auto& object) { return names += object.objectName().left(1), true; });
        return names;
    }

private Q_SLOTS:
    void init()
    {
        m_root = std::make_unique<Node>("root", m_journal);
        m_a = m_root->add("a");
        m_b = m_root->add("b");
        m_leaf = m_a->add("leaf");
        m_root->resetModified();
        m_journal.clear();
    }

    void emitsEachChangeOnce()
    {
        m_leaf->setModified();
        m_leaf->setModified();
        m_b->setModified();
        m_a->setModified();
        m_a->resetModified();
        m_root->resetModified();
        QCOMPARE(journal(), "leaf+ a+ root+ b+ leaf- a- b- root-");
    }

    void changesChildren()
    {
        m_leaf->setModified();
        QVERIFY(m_b->insertChild(0, m_leaf) && m_a->isModified());
        QCOMPARE(names(), "rabl");
        QVERIFY(m_root->moveChild(1, 0) && m_root->addChild(m_b) && m_root->insertChild(1, m_a));
        QCOMPARE(names(), "rabl");
        m_root->resetModified();
        QCOMPARE(journal(), "leaf+ a+ root+ a* b* b+ root* root* a- leaf- b- root-");
        delete m_leaf;
        QVERIFY(m_root->removeChild(m_b));
        m_root->resetModified();
        m_b->setModified(); // no longer concerns the old parent
        delete m_b;
        QCOMPARE(journal(), "b* b+ root+ root* root-");
    }

    void refuses()
    {
        support::LineRecorder lines;
        QVERIFY(!m_leaf->addChild(m_root.get()) && !m_a->addChild(m_a) && !m_a->addChild(nullptr));
        QVERIFY(!m_root->insertChild(3, m_leaf) && !m_root->insertChild(-1, m_leaf));
        QVERIFY(!m_root->moveChild(0, 2) && !m_root->removeChild(m_leaf));
        Node other("other", m_journal);
        other.moveToThread(nullptr);
        QVERIFY(!m_root->addChild(&other) && m_journal.isEmpty());
        QCOMPARE(lines.take().size(), 8);
    }

    void commitsAndReverts()
    {
        m_leaf->setModified();
        m_b->setModified();
        m_root->add("c");
        journal();
        m_leaf->hook = [] { return false; };
        QVERIFY(!m_root->commit());
        m_leaf->hook = []() -> bool { throw std::runtime_error("full disk"); };
        QVERIFY(support::throws<std::runtime_error>([&] { m_root->commit(); }));
        QCOMPARE(journal(), "commit root commit leaf commit root commit leaf");
        m_leaf->hook = [this] { return !m_root->commit(); }; // which is refused
        m_b->hook = [this] { return m_b->setModified(), m_leaf->setModified(), true; };
        QVERIFY(m_root->commit() && m_root->isModified()); // leaf changed after its hook
        QVERIFY(m_root->revert() && !m_root->isModified());
        QCOMPARE(journal(), "commit root commit leaf commit b b- revert leaf leaf- a- root-");
    }

    void mayChangeInsideSignals()
    {
        connect(m_leaf, &Node::modifiedChanged, m_root.get(), [this] { m_a->resetModified(); });
        m_leaf->setModified();
        QCOMPARE(journal(), "leaf+ leaf-"); // a and root are unmodified again
        connect(m_leaf, &Node::modifiedChanged, m_leaf, [this] { delete m_a; });
        m_leaf->setModified();
        QCOMPARE(journal(), "leaf+ leaf- root* root+");
        Node* const child = m_b->add("c");
        connect(m_b, &Node::childrenChanged, [this] { m_root.reset(); });
        delete child; // only once
        QVERIFY(!m_root);
    }

    void mayChangeInsideWalksAndHooks()
    {
        m_root->walk([this](auto& object) {
            if (&object == m_a)
                delete m_leaf;
            return &object != m_root.get() || m_root->addChild(new Node("new", m_journal));
        });
        QCOMPARE(names(), "rabn");
        journal();
        m_a->hook = [this] { return m_root.reset(), true; };
        QVERIFY(!m_root->commit());
        QCOMPARE(journal(), "commit root commit a");
    }

    void isDeepAndWide()
    {
        constexpr int count = 100000;
        tools::HierarchicalDbObject* deepest = m_root.get();
        for (int i = 0; i < count; ++i) {
            m_root->addChild(new tools::HierarchicalDbObject);
            deepest->addChild(new tools::HierarchicalDbObject);
            deepest = deepest->childObjects().last();
        }
        QVERIFY(m_root->commit() && !m_root->isModified());
        deepest->setModified();
        int visited = 0;
        QVERIFY(m_root->walk([&](auto&) { return ++visited > 0; }));
        QCOMPARE(visited, 2 * count + 4);
        QVERIFY(m_root->isModified() && m_root->revert() && !deepest->isModified());
        m_root.reset();
    }
};

QTEST_GUILESS_MAIN(TestHierarchicalDbObject)
#include "tst_hierarchicaldbobject.moc"
