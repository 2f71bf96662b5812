#include "document/ipAddress.h"

#include <gtest/gtest.h>

using namespace mordhost;

namespace {

// Version and bytes in hexadecimal: "4 7f000001"; "none" for an invalid address.
std::string Read(const std::string& text) {
    const auto address = ParseIpAddress(text);
    if (!address) {
        return "none";
    }
    std::string shown = address->version == IpAddress::Version::v4 ? "4 " : "6 ";
    for (int i = 0; i < address->Bits() / 8; ++i) {
        char digits[3];
        std::snprintf(digits, sizeof digits, "%02x", address->bytes[static_cast<size_t>(i)]);
        shown += digits;
    }
    return shown;
}

bool InRange(const std::string& range, const std::string& address) {
    std::string reason;
    return ParseAddressRange(range, reason).value().Contains(ParseIpAddress(address).value());
}

std::string RangeRefusal(const std::string& range) {
    std::string reason = "accepted";
    ParseAddressRange(range, reason);
    return reason;
}

} // namespace

TEST(IpAddress, FourDecimalNumbersMakeAnAddressOfVersion4) {
    EXPECT_EQ(Read("127.0.0.1"), "4 7f000001");
    EXPECT_EQ(Read("0.0.0.0"), "4 00000000");
    EXPECT_EQ(Read("255.255.255.255"), "4 ffffffff");
}

TEST(IpAddress, OtherTextsWithDotsAreRefused) {
    for (const char* text : {"",         "1",         "1.2.3",    "1.2.3.4.5",  "256.0.0.1",  "1.2.3.",   ".1.2.3",
                             "1..2.3",   "01.2.3.4",  "1.2.3.04", "1.2.3.00",   "1.2.3.4 ",   " 1.2.3.4", "-1.2.3.4",
                             "+1.2.3.4", "0x1.2.3.4", "1.2.3.4a", "1000.1.1.1", "1.2.3.4:80", "16909060"}) {
        EXPECT_EQ(Read(text), "none") << text;
    }
}

TEST(IpAddress, EightGroupsMakeAnAddressOfVersion6) {
    EXPECT_EQ(Read("2001:db8:1:2:3:4:5:6"), "6 20010db8000100020003000400050006");
    EXPECT_EQ(Read("FE80:0:0:0:0:0:0:ABCD"), "6 fe80000000000000000000000000abcd");
}

TEST(IpAddress, AGapReplacesGroupsOfZeros) {
    EXPECT_EQ(Read("::"), "6 00000000000000000000000000000000");
    EXPECT_EQ(Read("::1"), "6 00000000000000000000000000000001");
    EXPECT_EQ(Read("1::"), "6 00010000000000000000000000000000");
    EXPECT_EQ(Read("2001:db8::7:8"), "6 20010db8000000000000000000070008");
    EXPECT_EQ(Read("1:2:3:4:5:6:7::"), "6 00010002000300040005000600070000");
    EXPECT_EQ(Read("::2:3:4:5:6:7:8"), "6 00000002000300040005000600070008");
}

TEST(IpAddress, TheEndMayBeDotted) {
    EXPECT_EQ(Read("64:ff9b::192.0.2.33"), "6 0064ff9b0000000000000000c0000221");
    EXPECT_EQ(Read("1:2:3:4:5:6:1.2.3.4"), "6 00010002000300040005000601020304");
}

TEST(IpAddress, AMappedAddressIsReadAsVersion4) {
    EXPECT_EQ(Read("::ffff:192.0.2.7"), "4 c0000207");
    EXPECT_EQ(Read("::FFFF:c000:207"), "4 c0000207");
    EXPECT_EQ(Read("::fffe:c000:207"), "6 00000000000000000000fffec0000207");
}

TEST(IpAddress, OtherTextsWithColonsAreRefused) {
    for (const char* text : {":",
                             ":::",
                             "1:2:3:4:5:6:7",
                             "1:2:3:4:5:6:7:8:9",
                             "1::2::3",
                             "12345::",
                             "g::",
                             "1:",
                             ":1",
                             "1:2:3:4:5:6:7:",
                             "::1%eth0",
                             "fe80::1%1",
                             "1:2:3:4:5:6:7::8",
                             "::1.2.3",
                             "1.2.3.4::",
                             "::1.2.3.4:5",
                             "1:2:3:4:5:6:7:1.2.3.4",
                             "1:2:3:4:5:6::1.2.3.4",
                             "1:2:3:4::5:6:7:8",
                             "00001::",
                             "::01.2.3.4",
                             "::1.2.3.04",
                             ":: 1",
                             "[::1]",
                             "[::1]:80",
                             "::1%0",
                             "::1/64",
                             "::-1",
                             "1::2:"}) {
        EXPECT_EQ(Read(text), "none") << text;
    }
}

TEST(IpAddress, ANulOrAVeryLongTextIsNotAnAddress) {
    EXPECT_EQ(Read(std::string("1.2.3.4\0", 8)), "none");
    EXPECT_EQ(Read(std::string("::1\0%", 5)), "none");
    EXPECT_EQ(Read("::" + std::string(100000, '0')), "none");
    EXPECT_EQ(Read("0000:0000:0000:0000:0000:fffe:255.255.255.255"), "6 00000000000000000000fffeffffffff");
}

TEST(IpAddress, IsMadeOfBytesAndUnmapped) {
    const unsigned char v4[] = {192, 0, 2, 7};
    const unsigned char mapped[] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xFF, 0xFF, 192, 0, 2, 7};
    const unsigned char v6[] = {0x20, 1, 0xD, 0xB8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 7};
    EXPECT_EQ(MakeIpAddress(IpVersion::v4, v4), ParseIpAddress("192.0.2.7"));
    EXPECT_EQ(MakeIpAddress(IpVersion::v6, mapped), ParseIpAddress("192.0.2.7"));
    EXPECT_EQ(MakeIpAddress(IpVersion::v6, v6), ParseIpAddress("2001:db8::7"));
}

TEST(IpAddress, IsWrittenInItsUsualForm) {
    for (const std::string text :
         {"0.0.0.0", "192.0.2.255", "::", "::1", "2001:db8::7", "fe80::1:0:0:abcd", "1:2:3:4:5:6:7:8"}) {
        EXPECT_EQ(TextOf(ParseIpAddress(text).value()), text);
    }
    EXPECT_EQ(TextOf(ParseIpAddress("2001:0DB8::").value()), "2001:db8::");
    EXPECT_EQ(TextOf(ParseIpAddress("::ffff:c000:207").value()), "192.0.2.7");
}

TEST(AddressRange, OneAddressIsARange) {
    EXPECT_TRUE(InRange("10.1.2.3", "10.1.2.3"));
    EXPECT_FALSE(InRange("10.1.2.3", "10.1.2.2"));
    EXPECT_TRUE(InRange("::1", "0:0:0:0:0:0:0:1"));
    EXPECT_FALSE(InRange("::1", "::2"));
}

TEST(AddressRange, APrefixContainsAllAddressesThatBeginWithIt) {
    EXPECT_TRUE(InRange("10.0.0.0/8", "10.255.255.255"));
    EXPECT_FALSE(InRange("10.0.0.0/8", "11.0.0.0"));
    EXPECT_TRUE(InRange("192.0.2.128/25", "192.0.2.129"));
    EXPECT_FALSE(InRange("192.0.2.128/25", "192.0.2.127"));
    EXPECT_TRUE(InRange("2001:db8::/33", "2001:db8:7fff::1"));
    EXPECT_FALSE(InRange("2001:db8::/33", "2001:db8:8000::1"));
    EXPECT_TRUE(InRange("fd00::2/128", "fd00::2"));
}

TEST(AddressRange, APrefixOfZeroBitsContainsOnlyItsVersion) {
    EXPECT_TRUE(InRange("0.0.0.0/0", "203.0.113.9"));
    EXPECT_TRUE(InRange("::/0", "fe80::1"));
    EXPECT_FALSE(InRange("0.0.0.0/0", "::1"));
    EXPECT_FALSE(InRange("::/0", "127.0.0.1"));
}

TEST(AddressRange, MappedRangesAndAddressesAreReadAsVersion4) {
    EXPECT_TRUE(InRange("10.0.0.0/8", "::ffff:10.1.2.3"));
    EXPECT_TRUE(InRange("::ffff:10.0.0.0/104", "10.1.2.3"));
    EXPECT_FALSE(InRange("::ffff:10.0.0.0/104", "11.1.2.3"));
    EXPECT_TRUE(InRange("::ffff:0.0.0.0/96", "203.0.113.9"));
}

TEST(AddressRange, AnInvalidRangeIsRefusedWithTheReason) {
    EXPECT_EQ(RangeRefusal("10.0.0"), "\"10.0.0\" is not an IP address");
    EXPECT_EQ(RangeRefusal("host/8"), "\"host\" is not an IP address");
    EXPECT_EQ(RangeRefusal("10.0.0.0/33"), "\"33\" is not a prefix length from 0 to 32");
    EXPECT_EQ(RangeRefusal("::/129"), "\"129\" is not a prefix length from 0 to 128");
    EXPECT_EQ(RangeRefusal("10.0.0.0/"), "\"\" is not a prefix length from 0 to 32");
    EXPECT_EQ(RangeRefusal("10.0.0.0/8/8"), "\"8/8\" is not a prefix length from 0 to 32");
    EXPECT_EQ(RangeRefusal("10.0.0.0/-1"), "\"-1\" is not a prefix length from 0 to 32");
}

TEST(AddressRange, BitsAfterThePrefixAreRefused) {
    EXPECT_EQ(RangeRefusal("10.0.0.1/8"), "10.0.0.1 has bits set after the first 8");
    EXPECT_EQ(RangeRefusal("fd00::1/64"), "fd00::1 has bits set after the first 64");
    EXPECT_EQ(RangeRefusal("10.0.0.0/7"), "accepted");
}
