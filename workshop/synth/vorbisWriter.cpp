// The encoder's usual loop: samples, blocks, packets, pages. The stream's serial number is
// fixed, so equal sound gives equal bytes.
#include "workshop/synth/vorbisWriter.h"

#include "workshop/fileWriter.h"
#include "workshop/stop.h"

#include <vorbis/vorbisenc.h>

constexpr int SERIAL = 0x6B37;  // "k7"
constexpr float QUALITY = 0.5F; // "5" in the encoder's own words

struct st_vorbisWriter {
    std::string path;
    std::string bytes;
    vorbis_info info;
    vorbis_comment comment;
    vorbis_dsp_state state;
    vorbis_block block;
    ogg_stream_state stream;
};

static void takePage(st_vorbisWriter &writer, const ogg_page &page) {
    writer.bytes.append(reinterpret_cast<const char *>(page.header),
                        static_cast<std::size_t>(page.header_len));
    writer.bytes.append(reinterpret_cast<const char *>(page.body),
                        static_cast<std::size_t>(page.body_len));
}

static void writeHeaders(st_vorbisWriter &writer) {
    ogg_packet packets[3];
    vorbis_analysis_headerout(&writer.state, &writer.comment, &packets[0], &packets[1],
                              &packets[2]);
    for (ogg_packet &packet : packets)
        ogg_stream_packetin(&writer.stream, &packet);
    ogg_page page;
    // The sound has to begin on a page of its own.
    while (ogg_stream_flush(&writer.stream, &page) != 0)
        takePage(writer, page);
}

st_vorbisWriter *openVorbis(const std::string &path) {
    auto *writer = new st_vorbisWriter{path, {}, {}, {}, {}, {}, {}};
    vorbis_info_init(&writer->info);
    if (vorbis_encode_init_vbr(&writer->info, 2, SAMPLE_RATE, QUALITY) != 0)
        stop("the Vorbis encoder refuses 44.1 kHz stereo");
    vorbis_comment_init(&writer->comment);
    vorbis_comment_add_tag(&writer->comment, "TITLE", "tamo lani rete");
    vorbis_comment_add_tag(&writer->comment, "ARTIST", "ferrol");
    vorbis_analysis_init(&writer->state, &writer->info);
    vorbis_block_init(&writer->state, &writer->block);
    ogg_stream_init(&writer->stream, SERIAL);
    writeHeaders(*writer);
    return writer;
}

static void takePackets(st_vorbisWriter &writer) {
    while (vorbis_analysis_blockout(&writer.state, &writer.block) == 1) {
        vorbis_analysis(&writer.block, nullptr);
        vorbis_bitrate_addblock(&writer.block);
        ogg_packet packet;
        while (vorbis_bitrate_flushpacket(&writer.state, &packet) != 0) {
            ogg_stream_packetin(&writer.stream, &packet);
            ogg_page page;
            while (ogg_stream_pageout(&writer.stream, &page) != 0)
                takePage(writer, page);
        }
    }
}

void writeVorbis(st_vorbisWriter *writer, const std::vector<st_stereo> &samples) {
    const int count = static_cast<int>(samples.size());
    float **buffer = vorbis_analysis_buffer(&writer->state, count);
    for (std::size_t i = 0; i < samples.size(); i++) {
        buffer[0][i] = samples[i].left;
        buffer[1][i] = samples[i].right;
    }
    vorbis_analysis_wrote(&writer->state, count);
    takePackets(*writer);
}

void closeVorbis(st_vorbisWriter *writer) {
    vorbis_analysis_wrote(&writer->state, 0); // the end of the stream
    takePackets(*writer);
    writeBytes(writer->path, writer->bytes);
    ogg_stream_clear(&writer->stream);
    vorbis_block_clear(&writer->block);
    vorbis_dsp_clear(&writer->state);
    vorbis_comment_clear(&writer->comment);
    vorbis_info_clear(&writer->info);
    delete writer;
}
