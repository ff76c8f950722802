#include "commands.h"
#include "drive.h"

#include <cerrno>
#include <chrono>
#include <cstring>
#include <linux/cdrom.h>
#include <scsi/sg.h>
#include <sstream>
#include <thread>

namespace tonquay::simulated {
namespace {

int fail(int error)
{
    errno = error;
    return -1;
}

int failAs(const Sense& sense)
{
    if (sense.good())
        return 0;
    return fail(sense == noMedium ? ENOMEDIUM : EIO);
}

}

/// The requests of linux/cdrom.h, each with what the kernel demands before the drive is asked at all.
class Requests {
public:
    explicit Requests(Drive& drive) : drive_(drive) {}

    int run(unsigned long request, void* argument);

private:
    int header(cdrom_tochdr& header) const;
    int entry(cdrom_tocentry& entry) const;
    int multisession(cdrom_multisession& session) const;
    int readAudio(const cdrom_read_audio& read);
    int packet(cdrom_generic_command& packet);
    int scsi(sg_io_hdr& header);
    int status() const;
    int discStatus() const;
    int eject();
    int lockDoor(bool lock);
    int mediaChanged();

    // The argument of some requests is a number in the place of a pointer.
    static bool flag(const void* argument) { return argument != nullptr; }

    Drive& drive_;
};

int Requests::run(unsigned long request, void* argument)
{
    switch (request) {
    case CDROMREADTOCHDR: return header(*static_cast<cdrom_tochdr*>(argument));
    case CDROMREADTOCENTRY: return entry(*static_cast<cdrom_tocentry*>(argument));
    case CDROMMULTISESSION: return multisession(*static_cast<cdrom_multisession*>(argument));
    case CDROMREADAUDIO: return readAudio(*static_cast<cdrom_read_audio*>(argument));
    case CDROM_SEND_PACKET: return packet(*static_cast<cdrom_generic_command*>(argument));
    case SG_IO: return scsi(*static_cast<sg_io_hdr*>(argument));
    case CDROM_DRIVE_STATUS: return status();
    case CDROM_DISC_STATUS: return discStatus();
    case CDROM_MEDIA_CHANGED: return mediaChanged();
    case CDROMEJECT: return eject();
    case CDROMCLOSETRAY: return drive_.moveDoor(false) ? 0 : fail(EIO);
    case CDROM_LOCKDOOR: return lockDoor(flag(argument));
    case CDROM_SELECT_SPEED: return 0;
    case CDROM_GET_CAPABILITY:
        return CDC_PLAY_AUDIO | CDC_LOCK | CDC_OPEN_TRAY | CDC_CLOSE_TRAY | CDC_GENERIC_PACKET | CDC_MULTI_SESSION |
               CDC_MEDIA_CHANGED | CDC_DRIVE_STATUS;
    default: return fail(ENOTTY);
    }
}

int Requests::header(cdrom_tochdr& header) const
{
    if (const Sense sense = drive_.readiness(); !sense.good())
        return failAs(sense);
    header.cdth_trk0 = static_cast<__u8>(drive_.config_.firstNumber);
    header.cdth_trk1 = static_cast<__u8>(drive_.lastNumber());
    return 0;
}

int Requests::entry(cdrom_tocentry& entry) const
{
    if (const Sense sense = drive_.readiness(); !sense.good())
        return failAs(sense);
    const auto start = drive_.startOf(entry.cdte_track);
    if (!start)
        return fail(EINVAL);
    entry.cdte_adr = 1;
    entry.cdte_ctrl = drive_.isData(entry.cdte_track) ? CDROM_DATA_TRACK : 0;
    entry.cdte_datamode = 0;
    if (entry.cdte_format == CDROM_MSF) {
        const int frames = *start + CD_MSF_OFFSET;
        entry.cdte_addr.msf.minute = static_cast<__u8>(frames / (CD_SECS * CD_FRAMES));
        entry.cdte_addr.msf.second = static_cast<__u8>(frames / CD_FRAMES % CD_SECS);
        entry.cdte_addr.msf.frame = static_cast<__u8>(frames % CD_FRAMES);
    } else {
        entry.cdte_addr.lba = *start;
    }
    return 0;
}

int Requests::multisession(cdrom_multisession& session) const
{
    if (const Sense sense = drive_.readiness(); !sense.good())
        return failAs(sense);
    session.xa_flag = drive_.config_.lastSession > 0 ? 1 : 0;
    if (session.addr_format == CDROM_MSF) {
        const int frames = drive_.config_.lastSession + CD_MSF_OFFSET;
        session.addr.msf.minute = static_cast<__u8>(frames / (CD_SECS * CD_FRAMES));
        session.addr.msf.second = static_cast<__u8>(frames / CD_FRAMES % CD_SECS);
        session.addr.msf.frame = static_cast<__u8>(frames % CD_FRAMES);
    } else {
        session.addr.lba = drive_.config_.lastSession;
    }
    return 0;
}

int Requests::readAudio(const cdrom_read_audio& read)
{
    if (read.nframes < 1 || read.nframes > CD_FRAMES || read.addr_format != CDROM_LBA)
        return fail(EINVAL);
    const std::span buffer(read.buf, static_cast<std::size_t>(read.nframes) * CD_FRAMESIZE_RAW);
    return failAs(drive_.read(read.addr.lba, read.nframes, true, buffer));
}

int Requests::packet(cdrom_generic_command& packet)
{
    const Sense sense = Commands(drive_).run(packet.cmd, {packet.buffer, packet.buffer ? packet.buflen : 0});
    if (sense.good())
        return 0;
    if (packet.sense)
        describe(sense, {static_cast<std::uint8_t*>(static_cast<void*>(packet.sense)), senseBytes});
    // The kernel tells the reason in the sense bytes only.
    return fail(EIO);
}

int Requests::scsi(sg_io_hdr& header)
{
    std::uint8_t command[16] = {};
    std::memcpy(command, header.cmdp, std::min<std::size_t>(header.cmd_len, sizeof command));
    const Sense sense = Commands(drive_).run(
        command, {static_cast<std::uint8_t*>(header.dxferp), header.dxferp ? header.dxfer_len : 0});
    header.status = sense.good() ? 0 : 2;
    header.masked_status = header.status >> 1;
    header.host_status = 0;
    header.driver_status = sense.good() ? 0 : 8;
    header.resid = 0;
    header.sb_len_wr = 0;
    if (!sense.good() && header.sbp) {
        describe(sense, {header.sbp, header.mx_sb_len});
        header.sb_len_wr = static_cast<unsigned char>(std::min<std::size_t>(header.mx_sb_len, senseBytes));
    }
    return 0;
}

int Requests::status() const
{
    if (drive_.doorOpen_)
        return CDS_TRAY_OPEN;
    if (!drive_.mediumIn())
        return CDS_NO_DISC;
    return drive_.config_.ready ? CDS_DISC_OK : CDS_DRIVE_NOT_READY;
}

int Requests::discStatus() const
{
    if (!drive_.mediumIn())
        return CDS_NO_DISC;
    bool audio = false;
    bool data = false;
    for (const Config::Track& track : drive_.config_.tracks)
        (track.audio ? audio : data) = true;
    return audio && data ? CDS_MIXED : audio ? CDS_AUDIO : CDS_DATA_1;
}

int Requests::eject()
{
    // A door is not opened under the feet of a second user of the node.
    if (drive_.opens_ != 1 || drive_.kernelKeepsLock_)
        return fail(EBUSY);
    drive_.locked_ = false;
    return drive_.moveDoor(true) ? 0 : fail(EIO);
}

int Requests::lockDoor(bool lock)
{
    if (!lock && drive_.opens_ != 1)
        return fail(EBUSY);
    drive_.kernelKeepsLock_ = lock;
    drive_.locked_ = lock;
    drive_.keepState();
    return 0;
}

int Requests::mediaChanged()
{
    const int answer = drive_.changed_ ? 1 : 0;
    drive_.changed_ = false;
    return answer;
}

int Drive::control(unsigned long request, void* argument)
{
    const std::lock_guard guard(mutex_);
    reload();
    if (config_.slowCommand > 0)
        std::this_thread::sleep_for(std::chrono::microseconds(config_.slowCommand));
    const int answer = Requests(*this).run(request, argument);
    const int error = errno;
    std::ostringstream line;
    line << "request " << std::hex << request;
    if (request == CDROM_SEND_PACKET)
        line << " command " << int{static_cast<cdrom_generic_command*>(argument)->cmd[0]};
    line << ": " << std::dec << answer;
    log(line.str());
    errno = error;
    return answer;
}

}
