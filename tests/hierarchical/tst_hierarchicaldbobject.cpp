#include "hierarchical/hierarchicaldbobject.h"
#include "support.h"

#include <QtTest>

#include <functional>
#include <memory>

namespace
{

using Hook = std::function<bool()>;

/// Notes what it tells and what its hooks are called for; the hook does what a test wants.
class Node : public tools::HierarchicalDbObject
{
public:
    Node(const char* name, QStringList& journal)
        : m_name(name)
        , m_journal(journal)
    {
        setObjectName(name);
        connect(this, &Node::modifiedChanged,
                [this](bool isModified) { m_journal += m_name + (isModified ? "+" : "-"); });
        connect(this, &Node::childrenChanged, [this] { m_journal += m_name + "*"; });
    }
    Node* add(const char* name)
    {
        auto* node = new Node(name, m_journal);
        addChild(node);
        return node;
    }
    Hook hook = [] { return true; };

protected:
    // A copy of the hook, which may delete this.
    bool commitSelf() override { return m_journal += "commit " + m_name, Hook(hook)(); }
    bool revertSelf() override { return m_journal += "revert " + m_name, Hook(hook)(); }

private:
    const QString m_name;
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

    void tellsEachFlipOnce()
    {
        m_leaf->setModified();
        QCOMPARE(journal(), "leaf+ a+ root+");
        m_leaf->setModified();
        m_b->setModified();
        m_a->setModified();
        QCOMPARE(journal(), "b+");
        m_a->resetModified(); // leaf, too
        QCOMPARE(journal(), "leaf- a-");
        m_root->resetModified();
        QCOMPARE(journal(), "b- root-");
    }

    void changesChildren()
    {
        m_leaf->setModified();
        journal();
        QVERIFY(m_b->insertChild(0, m_leaf)); // a has lost it, b has got it
        QCOMPARE(journal(), "a* b* b+");
        QVERIFY(m_a->isModified() && names() == "rabl");
        QVERIFY(m_root->moveChild(1, 0) && m_root->addChild(m_b) && m_root->insertChild(1, m_a));
        QCOMPARE(names(), "rabl");
        m_root->resetModified();
        journal();
        delete m_leaf;
        QCOMPARE(journal(), "b* b+ root+");
        QVERIFY(m_root->removeChild(m_b));
        m_root->resetModified();
        journal();
        m_b->setModified(); // is none of the old parent's business
        delete m_b;
        QCOMPARE(journal(), "");
    }

    void refuses()
    {
        support::LineRecorder lines;
        QVERIFY(!m_leaf->addChild(m_root.get()) && !m_a->addChild(m_a) && !m_a->addChild(nullptr));
        QVERIFY(!m_root->insertChild(3, m_leaf) && !m_root->insertChild(-1, m_leaf));
        QVERIFY(!m_root->moveChild(0, 2) && !m_root->removeChild(m_leaf));
        Node other("other", m_journal);
        other.moveToThread(nullptr);
        QVERIFY(!m_root->addChild(&other) && m_journal.isEmpty() && lines.take().size() == 8);
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
        QCOMPARE(journal(), "commit root commit leaf commit root commit leaf"); // parents first
        m_leaf->hook = [this] { return !m_root->commit(); };                    // refused inside
        m_b->hook = [this] { return m_b->setModified(), m_leaf->setModified(), true; };
        QVERIFY(m_root->commit());
        QCOMPARE(journal(), "commit root commit leaf commit b b-"); // the leaf was done already
        QVERIFY(m_root->isModified() && m_root->revert() && !m_root->isModified());
        QCOMPARE(journal(), "revert leaf leaf- a- root-");
    }

    void survivesWhatHandlersDo()
    {
        connect(m_leaf, &Node::modifiedChanged, m_root.get(), [this] { m_a->resetModified(); });
        m_leaf->setModified();
        QCOMPARE(journal(), "leaf+ leaf-"); // a and root have nothing to tell
        m_leaf->disconnect(m_root.get());
        connect(m_leaf, &Node::modifiedChanged, m_leaf, [this] { delete m_a; });
        m_leaf->setModified();
        QCOMPARE(journal(), "leaf+ root* root+");
        m_root->resetModified();

        m_b->add("c")->add("d")->setModified();
        m_root->walk([this](auto& object) {
            if (&object == m_b)
                delete m_b->childObjects()[0];
            return &object != m_root.get() || m_root->addChild(new Node("new", m_journal));
        });
        QCOMPARE(names(), "rbn");
        journal();
        m_b->hook = [this] { return m_root.reset(), true; };
        QVERIFY(!m_root->commit());
        QCOMPARE(journal(), "commit root commit b");
        init(); // and a child in its destructor is deleted once
        connect(m_a, &Node::childrenChanged, [this] { m_root.reset(); });
        delete m_leaf;
        QVERIFY(!m_root);
    }

    void isDeepAndWide()
    {
        constexpr int count = 100000;
        m_root = std::make_unique<Node>("root", m_journal);
        tools::HierarchicalDbObject* deepest = m_root.get();
        for (int i = 0; i < count; ++i) {
            deepest->addChild(new tools::HierarchicalDbObject);
            m_root->addChild(new tools::HierarchicalDbObject);
            deepest = deepest->childObjects()[0];
        }
        QVERIFY(m_root->commit() && !m_root->isModified());
        deepest->setModified();
        int visited = 0;
        QVERIFY(m_root->walk([&](auto&) { return ++visited > 0; }) && visited == 2 * count + 1);
        QVERIFY(m_root->isModified() && m_root->revert() && !deepest->isModified());
        m_root.reset();
    }
};

QTEST_GUILESS_MAIN(TestHierarchicalDbObject)
#include "tst_hierarchicaldbobject.moc"
