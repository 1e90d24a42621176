#include "simulator/device/CSimulatedDevice.h"
#include "simulator/transports/CSimulatedSystem.h"
#include "tests/midi/CPlatformTest.h"

#include <QList>

#include <vector>

namespace
{
class CSimulatedRig : public CPlatformRig
{
  public:
    CSimulatedRig()
    {
        system().reset();
    }

    ~CSimulatedRig() override
    {
        system().reset();
    }

    void plug(const QString& device, const QString& endpoint) override
    {
        m_devices.push_back(std::make_unique<CSimulatedDevice>());
        system().plug(*m_devices.back(), device, {endpoint});
        m_destinations.append(system().endpoints(false).last());
    }

    void unplug(int device) override
    {
        at(device).unplug();
    }

    void say(int device, const QByteArray& bytes) override
    {
        at(device).send(bytes);
    }

    [[nodiscard]] QByteArrayList heard(int device) override
    {
        QByteArrayList packets;
        for (const SentPacket& packet : system().packets()) {
            if (packet.taken && packet.destination == m_destinations.at(device))
                packets.append(packet.bytes);
        }
        return packets;
    }

    [[nodiscard]] bool endReception() override
    {
        system().endReception();
        return true;
    }

    [[nodiscard]] bool noticesLostDestinations() const override
    {
        return true;
    }

  private:
    static CSimulatedSystem& system()
    {
        return CSimulatedSystem::instance();
    }

    [[nodiscard]] CSimulatedDevice& at(int device) const
    {
        return *m_devices.at(static_cast<std::size_t>(device));
    }

    std::vector<std::unique_ptr<CSimulatedDevice>> m_devices;
    QList<MIDIEndpoint> m_destinations;
};
} // namespace

class TestSimulatedPlatform : public CPlatformTest
{
    Q_OBJECT

  protected:
    [[nodiscard]] std::unique_ptr<CPlatformRig> createRig() const override
    {
        return std::make_unique<CSimulatedRig>();
    }
};

KTZ_TEST(QCoreApplication, TestSimulatedPlatform)
#include "TestSimulatedPlatform.moc"
