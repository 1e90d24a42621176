#pragma once

#include <QList>
#include <QString>

/// A port of the fake platform: a null name is a missing one, and an absent port has no endpoint though it counts.
struct FakePort
{
    QString device;
    QString endpoint;
    bool absent = false;
};

/// An implementation of the platform contract whose ports are two lists that a test fills.
namespace FakeMIDIPlatform
{
extern QList<FakePort> g_sources;
extern QList<FakePort> g_destinations;
} // namespace FakeMIDIPlatform
