#include "tests/fakes/coremidi/CFakeCoreMIDI.h"
#include "tests/midi/CPlatformTest.h"

#include <QList>

namespace
{
class CMacRig : public CPlatformRig
{
  public:
    void plug(const QString& device, const QString& endpoint) override
    {
        m_sources.append(m_fake.addSource(endpoint.toUtf8(), device.toUtf8()));
        m_destinations.append(m_fake.addDestination(endpoint.toUtf8(), device.toUtf8()));
        m_plugged.append(m_sources.last());
    }

    void unplug(int device) override
    {
        m_fake.removeSource(static_cast<int>(m_plugged.indexOf(m_sources.at(device))));
        m_plugged.removeOne(m_sources.at(device));
    }

    void say(int device, const QByteArray& bytes) override
    {
        m_fake.receive(m_sources.at(device), {bytes});
    }

    [[nodiscard]] QByteArrayList heard(int device) override
    {
        // The packets do not say where they went, the calls do.
        for (const QString& call : m_fake.takeCalls()) {
            if (call.startsWith(QStringLiteral("MIDISend(")))
                m_receivers.append(call.section(QStringLiteral(", "), 1, 1).toUInt());
        }
        QByteArrayList packets;
        for (qsizetype i = 0; i < m_receivers.size(); ++i) {
            if (m_receivers.at(i) == m_destinations.at(device))
                packets.append(m_fake.sentPackets().at(i));
        }
        return packets;
    }

    [[nodiscard]] bool endReception() override
    {
        return false;
    }

    [[nodiscard]] bool noticesLostDestinations() const override
    {
        return false;
    }

  private:
    CFakeCoreMIDI m_fake;
    QList<MIDIEndpointRef> m_sources; ///< of every device
    QList<MIDIEndpointRef> m_destinations;
    QList<MIDIEndpointRef> m_plugged;   ///< the sources that are there
    QList<MIDIEndpointRef> m_receivers; ///< of each sent packet
};
} // namespace

class TestMacPlatform : public CPlatformTest
{
    Q_OBJECT

  protected:
    [[nodiscard]] std::unique_ptr<CPlatformRig> createRig() const override
    {
        return std::make_unique<CMacRig>();
    }
};

KTZ_TEST(QCoreApplication, TestMacPlatform)
#include "TestMacPlatform.moc"
