-- The dive store. Dives are read by field position as well as by name, so the order of the fields is part of the format.
-- Numbers are kept as text and read when used; depths are metres. Texts compare without regard to case.

CREATE TABLE main (
    DiveID       TEXT COLLATE NOCASE,                            --  0  "D" and 7 digits
    UserName     TEXT COLLATE NOCASE,                            --  1  serial of the device
    Department   TEXT COLLATE NOCASE,                            --  2
    site         TEXT COLLATE NOCASE,                            --  3
    Location     TEXT COLLATE NOCASE,                            --  4  name of the dive, at first its file's name
    weather      TEXT COLLATE NOCASE,                            --  5
    startdate    DATETIME,                                       --  6  "yyyy-mm-dd hh:mm:ss"
    finisheddate DATETIME,                                       --  7
    Duration     TEXT COLLATE NOCASE,                            --  8  minutes:seconds, without padding
    MaxDepth     TEXT COLLATE NOCASE,                            --  9
    -- A serial longer than this is a damaged line: the store refuses it, and the diver is told.
    Suit         TEXT COLLATE NOCASE CHECK (length(Suit) <= 50), -- 10
    Startcode    TEXT COLLATE NOCASE,                            -- 11  seconds since the start of 31 December 1991
    divenote     TEXT COLLATE NOCASE,                            -- 12
    sitenote     TEXT COLLATE NOCASE,                            -- 13
    Coments      TEXT COLLATE NOCASE,                            -- 14
    Version      TEXT COLLATE NOCASE,                            -- 15
    "Interval"   TEXT COLLATE NOCASE,                            -- 16  seconds
    otu          TEXT COLLATE NOCASE,                            -- 17
    systemid     TEXT COLLATE NOCASE,                            -- 18
    reserve1     TEXT COLLATE NOCASE,                            -- 19  keeps the positions behind it
    reserve2     TEXT COLLATE NOCASE,                            -- 20
    datmos       TEXT COLLATE NOCASE,                            -- 21  mBar
    dusage       TEXT COLLATE NOCASE,                            -- 22
    dstack       TEXT COLLATE NOCASE,                            -- 23
    descend      TEXT COLLATE NOCASE,                            -- 24
    HPCylinder   TEXT COLLATE NOCASE,                            -- 25
    dbtxtname    TEXT(50) COLLATE NOCASE                         -- 26  file in the folder dbtxt
);
CREATE INDEX main_diveid ON main (DiveID);
CREATE INDEX main_startcode ON main (Startcode);

CREATE TABLE gas (
    diveid  TEXT COLLATE NOCASE,
    Gastype TEXT COLLATE NOCASE,
    GasN2   TEXT COLLATE NOCASE,
    GasHe   TEXT COLLATE NOCASE,
    gasmod  TEXT COLLATE NOCASE,
    Gasstat TEXT COLLATE NOCASE
);
CREATE INDEX gas_diveid ON gas (diveid);

CREATE TABLE tissue (
    diveid     TEXT COLLATE NOCASE,
    Tissuetype TEXT COLLATE NOCASE,
    TissueN2   TEXT COLLATE NOCASE,
    TissueHe   TEXT COLLATE NOCASE
);
CREATE INDEX tissue_diveid ON tissue (diveid);

CREATE TABLE department (department TEXT COLLATE NOCASE);
CREATE TABLE site (Site TEXT COLLATE NOCASE);
CREATE TABLE weather (weather TEXT COLLATE NOCASE);
CREATE TABLE buddy (buddy TEXT COLLATE NOCASE);

CREATE TABLE buddylist (
    diveid    TEXT COLLATE NOCASE,
    buddylist TEXT COLLATE NOCASE
);
CREATE INDEX buddylist_diveid ON buddylist (diveid);

CREATE TABLE serialno (
    serial_no  TEXT COLLATE NOCASE,
    getstarted TEXT COLLATE NOCASE
);
INSERT INTO serialno VALUES (NULL, 'Open');

CREATE TABLE Display (Display TEXT COLLATE NOCASE);
INSERT INTO Display VALUES ('metre');

CREATE TABLE pfindex (itemname TEXT COLLATE NOCASE);

-- Nothing reads or writes rows of this one; the start keeps it at 50 fields.
CREATE TABLE Profile (
    item0  TEXT(20) COLLATE NOCASE, item1  TEXT(20) COLLATE NOCASE, item2  TEXT(20) COLLATE NOCASE,
    item3  TEXT(20) COLLATE NOCASE, item4  TEXT(20) COLLATE NOCASE, item5  TEXT(20) COLLATE NOCASE,
    item6  TEXT(20) COLLATE NOCASE, item7  TEXT(20) COLLATE NOCASE, item8  TEXT(20) COLLATE NOCASE,
    item9  TEXT(20) COLLATE NOCASE, item10 TEXT(20) COLLATE NOCASE, item11 TEXT(20) COLLATE NOCASE,
    item12 TEXT(20) COLLATE NOCASE, item13 TEXT(20) COLLATE NOCASE, item14 TEXT(20) COLLATE NOCASE,
    item15 TEXT(20) COLLATE NOCASE, item16 TEXT(20) COLLATE NOCASE, item17 TEXT(20) COLLATE NOCASE,
    item18 TEXT(20) COLLATE NOCASE, item19 TEXT(20) COLLATE NOCASE, item20 TEXT(20) COLLATE NOCASE,
    item21 TEXT(20) COLLATE NOCASE, item22 TEXT(20) COLLATE NOCASE, item23 TEXT(20) COLLATE NOCASE,
    item24 TEXT(20) COLLATE NOCASE, item25 TEXT(20) COLLATE NOCASE, item26 TEXT(20) COLLATE NOCASE,
    item27 TEXT(20) COLLATE NOCASE, item28 TEXT(20) COLLATE NOCASE, item29 TEXT(20) COLLATE NOCASE,
    item30 TEXT(20) COLLATE NOCASE, item31 TEXT(20) COLLATE NOCASE, item32 TEXT(20) COLLATE NOCASE,
    item33 TEXT(20) COLLATE NOCASE, item34 TEXT(20) COLLATE NOCASE, item35 TEXT(20) COLLATE NOCASE,
    item36 TEXT(20) COLLATE NOCASE, item37 TEXT(20) COLLATE NOCASE, item38 TEXT(20) COLLATE NOCASE,
    item39 TEXT(20) COLLATE NOCASE, item40 TEXT(20) COLLATE NOCASE, item41 TEXT(20) COLLATE NOCASE,
    item42 TEXT(20) COLLATE NOCASE, item43 TEXT(20) COLLATE NOCASE, item44 TEXT(20) COLLATE NOCASE,
    item45 TEXT(20) COLLATE NOCASE, item46 TEXT(20) COLLATE NOCASE, item47 TEXT(20) COLLATE NOCASE,
    item48 TEXT(20) COLLATE NOCASE, item49 TEXT(20) COLLATE NOCASE
);
