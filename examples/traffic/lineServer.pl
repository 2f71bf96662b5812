#!/usr/bin/perl
# A server of a line protocol: lineServer.pl PORT. Answers each line with its number; "quit" closes the connection.
use strict;
use warnings;
use IO::Socket::INET;

my $listener = IO::Socket::INET->new(LocalAddr => '127.0.0.1', LocalPort => $ARGV[0], Listen => 10, ReuseAddr => 1)
    or die "cannot listen: $!";
while (my $client = $listener->accept) {
    my $number = 0;
    while (my $line = <$client>) {
        last if $line =~ /^quit/;
        $number++;
        print $client "250 line $number taken\n";
    }
    close $client;
}
