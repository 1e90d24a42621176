#include "tests/fakes/alsa/FakeALSA.h"
#include "tests/midi/CPlatformTest.h"

#include <vector>

namespace
{
class CALSARig : public CPlatformRig
{
  public:
    CALSARig()
    {
        FakeALSA::reset();
    }

    void plug(const QString& device, const QString& endpoint) override
    {
        const int client = FakeALSA::addClient(device.toUtf8());
        m_devices.push_back({client, FakeALSA::addPort(client, endpoint.toUtf8())});
    }

    void unplug(int device) override
    {
        FakeALSA::removeClient(at(device).client);
    }

    void say(int device, const QByteArray& bytes) override
    {
        FakeALSA::send(at(device).client, at(device).port, bytes);
    }

    [[nodiscard]] QByteArrayList heard(int device) override
    {
        return FakeALSA::received(at(device).client, at(device).port);
    }

    [[nodiscard]] bool endReception() override
    {
        FakeALSA::hangUp(FakeALSA::newestOpenClient());
        return true;
    }

    [[nodiscard]] bool noticesLostDestinations() const override
    {
        return true;
    }

  private:
    struct Device
    {
        int client;
        int port;
    };

    [[nodiscard]] const Device& at(int device) const
    {
        return m_devices.at(static_cast<std::size_t>(device));
    }

    std::vector<Device> m_devices;
};
} // namespace

class TestALSAPlatform : public CPlatformTest
{
    Q_OBJECT

  protected:
    [[nodiscard]] std::unique_ptr<CPlatformRig> createRig() const override
    {
        return std::make_unique<CALSARig>();
    }
};

KTZ_TEST(QCoreApplication, TestALSAPlatform)
#include "TestALSAPlatform.moc"
