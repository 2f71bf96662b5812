# The servers and clients of this example; sourced by examples/record.
flagged=(127.0.2.0/24)

servers() {
    serve 18081 "$traffic/httpServer.py"  # the status page
    serve 12601 "$traffic/lineServer.pl"  # the telemetry
    serve 15020 "$traffic/tableServer.py" # the registers
}

clients() {
    lines 127.0.1.10 12601 "pump 3 on" "valve 7 open" "quit"
    lines 127.0.2.20 12601 "who is there" "quit"
    table 127.0.1.11 15020 "select 42"
    table 127.0.1.12 15020 "insert into entries values ('pump 3', 1)" "select * from entries"
    table 127.0.2.21 15020 "select count(*) from entries"
    page ::1 "[::1]" 18081
    page 127.0.1.13 127.0.0.1 18081
    page 127.0.2.22 127.0.0.1 18081
}
