BEGIN TRANSACTION;
PRAGMA foreign_keys = OFF;
DROP TABLE archive;
DROP TABLE region;
ALTER TABLE t_client RENAME TO t_customer;
--
-- WARNING : SQLite database doesn't support DROP COLUMN DDL script ! --
--           Cannot DROP COLUMN 'cache' for table 't_customer'
--
--
-- WARNING : SQLite database doesn't support DROP COLUMN DDL script ! --
--           Cannot DROP COLUMN 'region_id' for table 't_customer'
--
--
-- WARNING : SQLite database doesn't support RENAME COLUMN DDL script ! --
--           Cannot RENAME COLUMN from 'mail to 'email' for table 't_customer'
--
--
-- WARNING : SQLite database doesn't support RENAME COLUMN DDL script ! --
--           Cannot RENAME COLUMN from 'sum to 'balance' for table 't_customer'
--
ALTER TABLE t_customer ADD COLUMN state INTEGER NOT NULL;
ALTER TABLE t_customer ADD COLUMN country_code TEXT;

ALTER TABLE t_customer ADD COLUMN recruiter_id INTEGER;
ALTER TABLE t_customer ADD COLUMN email TEXT;
ALTER TABLE t_customer ADD COLUMN birthday DATE;
DROP INDEX idx_t_client_address_city;
CREATE INDEX idx_t_customer_phone ON t_customer (phone);
ALTER TABLE t_customer ADD COLUMN external TEXT;
ALTER TABLE t_customer ADD COLUMN unkeyed_ref TEXT;
CREATE TABLE country (code TEXT NOT NULL PRIMARY KEY, label TEXT);
--
-- WARNING : SQLite database doesn't support DROP COLUMN DDL script ! --
--           Cannot DROP COLUMN 'regions' for table 'order_line'
--
--
-- WARNING : SQLite database doesn't support RENAME COLUMN DDL script ! --
--           Cannot RENAME COLUMN from 'order_id|line_no to 'order_id|line_code' for table 'order_line'
--
--
-- WARNING : SQLite database doesn't support RENAME COLUMN DDL script ! --
--           Cannot RENAME COLUMN from 'lat|lon to 'lat|lon|alt' for table 'order_line'
--
DROP INDEX idx_order_line_lat;
DROP INDEX idx_order_line_lon;

ALTER TABLE order_line ADD COLUMN origin_code TEXT;
CREATE TABLE all_types (c_bool SMALLINT, c_zk_bool SMALLINT, c_short SMALLINT, c_long_long INTEGER, c_float FLOAT, c_long_double FLOAT, c_qint8 INTEGER, c_quint16 INTEGER, c_quint64 INTEGER, c_uuid TEXT, c_time TIME, c_datetime TIMESTAMP, c_bytes BLOB, c_neutral TEXT);
CREATE TABLE shipment_with_a_long_name (id INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, gross|net INTEGER, order_id INTEGER, line_code TEXT, archive_id INTEGER, FOREIGN KEY (order_id, line_code) REFERENCES order_line (order_id, line_code), FOREIGN KEY (address_id) REFERENCES t_customer (customer_id), FOREIGN KEY (archive_id) REFERENCES archive (id));
CREATE TABLE counted_pair (a INTEGER NOT NULL AUTOINCREMENT, b INTEGER NOT NULL AUTOINCREMENT, PRIMARY KEY (a, b));
CREATE TABLE bare ();
CREATE TABLE order_line_country (country_code TEXT, order_id INTEGER, line_code TEXT);
CREATE INDEX idx_country_label ON country (label);
CREATE INDEX idx_all_types_c_uuid ON all_types (c_uuid);
CREATE INDEX idx_shipment_with_a_long_name_gross ON shipment_with_a_long_name (gross);
CREATE INDEX idx_shipment_with_a_long_name_net ON shipment_with_a_long_name (net);
--
-- WARNING : SQLite database doesn't support ALTER TABLE my_table DROP CONSTRAINT DDL script ! --
--           Cannot DROP FOREIGN KEY 'fk_t_client_region_id' for table 't_client'
--
--
-- WARNING : SQLite database doesn't support ALTER TABLE my_table DROP CONSTRAINT DDL script ! --
--           Cannot DROP FOREIGN KEY 'fk_order_line_regions' for table 'order_line'
--
END TRANSACTION;
