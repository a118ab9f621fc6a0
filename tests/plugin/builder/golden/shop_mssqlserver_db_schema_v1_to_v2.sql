
DROP TABLE archive;
DROP TABLE region;
EXEC sp_rename 't_client', 't_customer';
ALTER TABLE t_customer DROP COLUMN cache;
ALTER TABLE t_customer DROP COLUMN region_id;
EXEC sp_rename 't_customer.mail', 'email', 'COLUMN';
EXEC sp_rename 't_customer.sum', 'balance', 'COLUMN';
ALTER TABLE t_customer ADD state INT NOT NULL;
ALTER TABLE t_customer ADD country_code TEXT;

ALTER TABLE t_customer ADD recruiter_id INT;
ALTER TABLE t_customer ADD email TEXT;
ALTER TABLE t_customer ADD birthday DATE;
DROP INDEX t_customer.idx_t_client_address_city;
CREATE INDEX idx_t_customer_phone ON t_customer (phone);
ALTER TABLE t_customer ADD external TEXT;
ALTER TABLE t_customer ADD unkeyed_ref TEXT;
CREATE TABLE country (code VARCHAR(255) NOT NULL PRIMARY KEY, label VARCHAR(900));


EXEC sp_rename 'order_line.line_no', 'line_code', 'COLUMN';
ALTER TABLE order_line DROP COLUMN lat;
ALTER TABLE order_line DROP COLUMN lon;
ALTER TABLE order_line ADD lat FLOAT;
ALTER TABLE order_line ADD lon FLOAT;
ALTER TABLE order_line ADD alt FLOAT;
DROP INDEX order_line.idx_order_line_lat;
DROP INDEX order_line.idx_order_line_lon;

ALTER TABLE order_line ADD origin_code TEXT;
CREATE TABLE all_types (c_bool TINYINT, c_zk_bool TINYINT, c_short SMALLINT, c_long_long BIGINT, c_float FLOAT, c_long_double FLOAT, c_qint8 SMALLINT, c_quint16 INT, c_quint64 BIGINT, c_uuid VARCHAR(900), c_time TIME, c_datetime DATETIME, c_bytes IMAGE, c_neutral TEXT);
CREATE TABLE shipment_with_a_long_name (id INT NOT NULL PRIMARY KEY IDENTITY(1,1), gross|net INT, order_id INT, line_code TEXT, archive_id INT);
CREATE TABLE counted_pair (a INT NOT NULL, b INT NOT NULL, CONSTRAINT pk_counted_pair_a_b PRIMARY KEY (a, b));
CREATE TABLE bare ();
CREATE TABLE order_line_country (country_code VARCHAR(255), order_id INT, line_code VARCHAR(255));
CREATE INDEX idx_country_label ON country (label);
CREATE INDEX idx_all_types_c_uuid ON all_types (c_uuid);
CREATE INDEX idx_shipment_with_a_long_name_gross ON shipment_with_a_long_name (gross);
CREATE INDEX idx_shipment_with_a_long_name_net ON shipment_with_a_long_name (net);
ALTER TABLE t_client DROP CONSTRAINT fk_t_client_region_id;
ALTER TABLE t_customer ADD CONSTRAINT fk_t_customer_country_code FOREIGN KEY (country_code) REFERENCES country (code);
ALTER TABLE t_customer ADD CONSTRAINT fk_t_customer_unkeyed_ref FOREIGN KEY (unkeyed_ref) REFERENCES all_types ();
ALTER TABLE order_line_country ADD CONSTRAINT fk_country_lines FOREIGN KEY (country_code) REFERENCES country (code);
ALTER TABLE order_line_region DROP CONSTRAINT fk_order_line_regions;
ALTER TABLE order_line_country ADD CONSTRAINT fk_order_line_countries FOREIGN KEY (order_id, line_code) REFERENCES order_line (order_id, line_code);
ALTER TABLE order_line ADD CONSTRAINT fk_order_line_origin_code FOREIGN KEY (origin_code) REFERENCES country (code);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_order_id_line_code FOREIGN KEY (order_id, line_code) REFERENCES order_line (order_id, line_code);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_address_id FOREIGN KEY (address_id) REFERENCES t_customer (customer_id);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_archive_id FOREIGN KEY (archive_id) REFERENCES archive (id);

