package tenrik.bench.peers;

import java.nio.ByteBuffer;
import java.nio.ByteOrder;
import java.nio.charset.StandardCharsets;

import tenrik.service.dtvserver.BGCallBack;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_NETWORK_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY;
import tenrik.service.dtvserver.events.notify.BG_EV_DTVSV_SERVICE_INFO_NOTIFY;
import tenrik.service.dtvserver.events.request.BG_EV_DTVSV_BML_MAIL_REQ;
import tenrik.service.dtvserver.events.response.BG_EV_DTVSV_CREATE_REPLY;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_DATE;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_DATE_TIME;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_EPG_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_MAIL_REQ;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_NETWORK_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_PRG_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_SERVICE_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_STREAM_INFO;
import tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_TIME;

/**
 * Makes the events of records, in Java, and hands them to the callbacks that the bridge calls. Each
 * peer has one of these for its one thread.
 */
final class Events {
    private static final int CREATE_REPLY = 0x1000004f;
    private static final int NETWORK_INFO = 0x10000090;
    private static final int SERVICE_INFO = 0x10000091;
    private static final int GUIDE = 0x10000093;
    private static final int MAIL_REQ = 0x10000047;

    private static final int SERVICE_SIZE = 52;
    private static final int PROGRAMME_SIZE = 636;
    /** Units of a programme's name and text at most. */
    private static final int LONGEST_NAME = 98;
    private static final int LONGEST_TEXT = 194;

    private final byte[] bytes = new byte[Peer.LONGEST];
    private final ByteBuffer record = ByteBuffer.wrap(bytes).order(ByteOrder.LITTLE_ENDIAN);

    private final char[] units = new char[LONGEST_TEXT];

    /** Where the technology puts the record of the next event. */
    byte[] bytes() {
        return bytes;
    }

    /** Hands on the event whose record is in {@link #bytes}. */
    void deliver(int id) {
        switch (id) {
            case CREATE_REPLY ->
                BGCallBack.onEvDtvsvCreateReply(
                        new BG_EV_DTVSV_CREATE_REPLY(shortAt(0), record.getInt(4)));
            case NETWORK_INFO ->
                BGCallBack.onEvDtvsvNetworkInfoNotify(
                        new BG_EV_DTVSV_NETWORK_INFO_NOTIFY(shortAt(0), network(), channel()));
            case SERVICE_INFO ->
                BGCallBack.onEvDtvsvServiceInfoNotify(
                        new BG_EV_DTVSV_SERVICE_INFO_NOTIFY(
                                shortAt(0), stream(), channel(), shortAt(8)));
            case GUIDE ->
                BGCallBack.onEvDtvsvReceiveEpgInfoNotify(
                        new BG_EV_DTVSV_RECEIVE_EPG_INFO_NOTIFY(
                                shortAt(0), guide(), channel(), shortAt(8)));
            case MAIL_REQ ->
                BGCallBack.onEvDtvsvBmlMailReq(new BG_EV_DTVSV_BML_MAIL_REQ(shortAt(0), mail()));
            default -> throw new IllegalArgumentException(Integer.toHexString(id));
        }
    }

    private BG_TS_DTVSVLIB_NETWORK_INFO network() {
        String streamName = shortAt(10) != 0 ? text(12, 44) : "";
        String networkName = shortAt(58) != 0 ? text(60, 44) : "";
        int[] services = new int[shortAt(106)];
        for (int i = 0; i < services.length; ++i) {
            services[i] = shortAt(108 + 2 * i);
        }
        return new BG_TS_DTVSVLIB_NETWORK_INFO(
                shortAt(8), length(streamName), streamName, shortAt(56), length(networkName),
                networkName, bytes[104] & 0xff, services.length, services);
    }

    private BG_TS_DTVSVLIB_STREAM_INFO stream() {
        BG_TS_DTVSVLIB_SERVICE_INFO[] services = new BG_TS_DTVSVLIB_SERVICE_INFO[bytes[16] & 0xff];
        for (int i = 0; i < services.length; ++i) {
            int at = 20 + i * SERVICE_SIZE;
            String name = record.getInt(at + 4) != 0 ? text(at + 8, 44) : "";
            services[i] = new BG_TS_DTVSVLIB_SERVICE_INFO(record.getInt(at), length(name), name);
        }
        return new BG_TS_DTVSVLIB_STREAM_INFO(record.getInt(12), services.length, services);
    }

    private BG_TS_DTVSVLIB_EPG_INFO guide() {
        BG_TS_DTVSVLIB_PRG_INFO[] following = new BG_TS_DTVSVLIB_PRG_INFO[shortAt(1288)];
        for (int i = 0; i < following.length; ++i) {
            following[i] = programme(1292 + i * PROGRAMME_SIZE);
        }
        return new BG_TS_DTVSVLIB_EPG_INFO(
                shortAt(12), programme(16), programme(16 + PROGRAMME_SIZE), following.length,
                following);
    }

    private BG_TS_DTVSVLIB_PRG_INFO programme(int at) {
        BG_TS_DTVSVLIB_DATE date =
                new BG_TS_DTVSVLIB_DATE(shortAt(at + 4), shortAt(at + 6), shortAt(at + 8));
        int nibbles = Math.min(bytes[at + 29] & 0xff, 7);
        byte[] content = new byte[nibbles];
        System.arraycopy(bytes, at + 30, content, 0, nibbles);
        byte[] user = new byte[nibbles];
        System.arraycopy(bytes, at + 37, user, 0, nibbles);
        String name = units(at + 48, Math.min(record.getInt(at + 44), LONGEST_NAME));
        String text = units(at + 248, Math.min(record.getInt(at + 244), LONGEST_TEXT));
        return new BG_TS_DTVSVLIB_PRG_INFO(
                record.getInt(at), new BG_TS_DTVSVLIB_DATE_TIME(date, time(at + 10)),
                bytes[at + 18] & 0xff, time(at + 20), bytes[at + 28] & 0xff, nibbles, content, user,
                length(name), name, length(text), text);
    }

    private BG_TS_DTVSVLIB_TIME time(int at) {
        return new BG_TS_DTVSVLIB_TIME(
                shortAt(at), shortAt(at + 2), shortAt(at + 4), shortAt(at + 6));
    }

    private BG_TS_DTVSVLIB_MAIL_REQ mail() {
        return new BG_TS_DTVSVLIB_MAIL_REQ(text(2, 124), text(126, 400), text(526, 2004));
    }

    private int shortAt(int at) {
        return record.getShort(at) & 0xffff;
    }

    private long channel() {
        return record.getInt(4) & 0xffffffffL;
    }

    /** A text in UTF-8 that ends at its first zero byte or with its field. */
    private String text(int at, int size) {
        int end = at;
        while (end < at + size && bytes[end] != 0) {
            ++end;
        }
        return new String(bytes, at, end - at, StandardCharsets.UTF_8);
    }

    private String units(int at, int count) {
        for (int i = 0; i < count; ++i) {
            units[i] = record.getChar(at + 2 * i);
        }
        return new String(units, 0, count);
    }

    /** The length of a text in modified UTF-8, as the events carry it. */
    private static int length(String text) {
        int bytes = 0;
        for (int i = 0; i < text.length(); ++i) {
            char unit = text.charAt(i);
            bytes += unit != 0 && unit < 0x80 ? 1 : unit < 0x800 ? 2 : 3;
        }
        return bytes;
    }
}
