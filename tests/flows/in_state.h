#pragma once

#include "tests/flows/flow_test.h"

namespace corvane::test {

/// Flow tests by the state of the Mac that they begin in.
class Bare : public FlowTest {
protected:
    Bare()
        : FlowTest(QStringLiteral("bare"))
    {}
};

/// Homebrew, and nothing else.
class Homebrew : public FlowTest {
protected:
    Homebrew()
        : FlowTest(QStringLiteral("homebrew"))
    {}
};

/// Colima and docker are installed, the engine is off.
class Stopped : public FlowTest {
protected:
    Stopped()
        : FlowTest(QStringLiteral("stopped"))
    {}
};

/// The engine runs as it does after Colima was installed: it has no container and its machine no room for Pi-hole.
class Fresh : public FlowTest {
protected:
    Fresh()
        : FlowTest(QStringLiteral("engine"))
    {}
};

/// The engine runs and has no container; its machine has room, and UDP is forwarded.
class Engine : public FlowTest {
protected:
    Engine()
        : FlowTest(QStringLiteral("engine"))
    {
        Mac::ctl(QStringLiteral("machine room"));
        Mac::ctl(QStringLiteral("forwarder grpc"));
    }
};

/// Pi-hole runs; the Mac still asks the router.
class Running : public FlowTest {
protected:
    Running()
        : FlowTest(QStringLiteral("running"))
    {}
};

/// Pi-hole runs and the Mac asks it, without a saved backup.
class Protected : public FlowTest {
protected:
    Protected()
        : FlowTest(QStringLiteral("protected"))
    {}
};

} // namespace corvane::test
