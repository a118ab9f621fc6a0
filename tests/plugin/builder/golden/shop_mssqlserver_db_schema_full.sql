
CREATE TABLE t_customer (customer_id INT NOT NULL PRIMARY KEY IDENTITY(1,1), email VARCHAR(900) NOT NULL UNIQUE, balance DECIMAL(12,2), state INT NOT NULL, birthday DATE, address.city TEXT, phone VARCHAR(900), external TEXT, deleted_at TEXT, country_code TEXT, recruiter_id INT, unkeyed_ref );
CREATE TABLE country (code VARCHAR(255) NOT NULL PRIMARY KEY, label VARCHAR(900));
CREATE TABLE tag (tag_id INT NOT NULL PRIMARY KEY IDENTITY(1,1), word TEXT NOT NULL);
CREATE TABLE order_line (order_id INT NOT NULL, line_code VARCHAR(255) NOT NULL, lat|lon|alt FLOAT, origin_code TEXT, CONSTRAINT pk_order_line_order_id_line_code PRIMARY KEY (order_id, line_code));
CREATE TABLE all_types (c_bool TINYINT, c_zk_bool TINYINT, c_short SMALLINT, c_long_long BIGINT, c_float FLOAT, c_long_double FLOAT, c_qint8 SMALLINT, c_quint16 INT, c_quint64 BIGINT, c_uuid VARCHAR(900), c_time TIME, c_datetime DATETIME, c_bytes IMAGE, c_neutral TEXT);
CREATE TABLE shipment_with_a_long_name (id INT NOT NULL PRIMARY KEY IDENTITY(1,1), gross|net INT, order_id INT, line_code TEXT, archive_id INT);
CREATE TABLE counted_pair (a INT NOT NULL, b INT NOT NULL, CONSTRAINT pk_counted_pair_a_b PRIMARY KEY (a, b));
CREATE TABLE bare ();
CREATE TABLE customer_tag (customer_id INT, tag_id INT);
CREATE TABLE order_line_country (country_code VARCHAR(255), order_id INT, line_code VARCHAR(255));
CREATE INDEX idx_t_customer_email ON t_customer (email);
CREATE INDEX idx_t_customer_phone ON t_customer (phone);
CREATE INDEX idx_t_customer_country_code ON t_customer (country_code);
CREATE INDEX idx_country_label ON country (label);
CREATE INDEX idx_all_types_c_uuid ON all_types (c_uuid);
CREATE INDEX idx_shipment_with_a_long_name_gross ON shipment_with_a_long_name (gross);
CREATE INDEX idx_shipment_with_a_long_name_net ON shipment_with_a_long_name (net);
ALTER TABLE t_customer ADD CONSTRAINT fk_t_customer_country_code FOREIGN KEY (country_code) REFERENCES country (code);
ALTER TABLE customer_tag ADD CONSTRAINT fk_t_customer_tags FOREIGN KEY (customer_id) REFERENCES t_customer (customer_id);
ALTER TABLE t_customer ADD CONSTRAINT fk_t_customer_unkeyed_ref FOREIGN KEY (unkeyed_ref) REFERENCES all_types ();
ALTER TABLE order_line_country ADD CONSTRAINT fk_country_lines FOREIGN KEY (country_code) REFERENCES country (code);
ALTER TABLE customer_tag ADD CONSTRAINT fk_tag_customers FOREIGN KEY (tag_id) REFERENCES tag (tag_id);
ALTER TABLE order_line_country ADD CONSTRAINT fk_order_line_countries FOREIGN KEY (order_id, line_code) REFERENCES order_line (order_id, line_code);
ALTER TABLE order_line ADD CONSTRAINT fk_order_line_origin_code FOREIGN KEY (origin_code) REFERENCES country (code);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_order_id_line_code FOREIGN KEY (order_id, line_code) REFERENCES order_line (order_id, line_code);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_address_id FOREIGN KEY (address_id) REFERENCES t_customer (customer_id);
ALTER TABLE shipment_with_a_long_name ADD CONSTRAINT fk_shipment_with_a_long_name_archive_id FOREIGN KEY (archive_id) REFERENCES archive (id);

