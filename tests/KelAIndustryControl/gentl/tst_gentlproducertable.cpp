// SPDX-License-Identifier: Apache-2.0
// Which files are one producer.
#include <KelAIndustryControl/gentl/ProducerTable.h>

#include <gtest/gtest.h>

using namespace kela::gentl;

namespace
{

// The table lives as long as the process, so every test has inodes of its own.
ProducerFile fileOf(const char *path, ino_t inode, off_t size = 1000)
{
    return {path, 1, inode, size, 5};
}

} // namespace

TEST(GenTLProducerTable, onePathIsOneProducerWhateverItsFile)
{
    Producer &first = ProducerTable::producerOf(fileOf("/p/one.cti", 11));

    EXPECT_EQ(&ProducerTable::producerOf(fileOf("/p/one.cti", 12)), &first);
    EXPECT_EQ(ProducerTable::known(fileOf("/p/one.cti", 13)), &first);
    EXPECT_EQ(ProducerTable::find(first.token()), &first);
}

TEST(GenTLProducerTable, secondLinkToAUsedFileIsTheSameProducer)
{
    Producer &first = ProducerTable::producerOf(fileOf("/p/link-a.cti", 21));
    const Producer::Use use(first);

    EXPECT_EQ(&ProducerTable::producerOf(fileOf("/p/link-b.cti", 21)), &first);
}

TEST(GenTLProducerTable, fileThatTookTheInodeOfADeletedOneIsAnotherProducer)
{
    Producer &deleted = ProducerTable::producerOf(fileOf("/p/deleted.cti", 31));
    const Producer::Use use(deleted);

    EXPECT_NE(&ProducerTable::producerOf(fileOf("/p/fresh.cti", 31, 2000)), &deleted);
}

TEST(GenTLProducerTable, linkToAFileThatNobodyUsesIsAnotherProducer)
{
    Producer &unused = ProducerTable::producerOf(fileOf("/p/unused.cti", 41));

    EXPECT_NE(&ProducerTable::producerOf(fileOf("/p/other.cti", 41)), &unused);
}

TEST(GenTLProducerTable, fileThatWasNotMetIsNotKnown)
{
    EXPECT_EQ(ProducerTable::known(fileOf("/p/never.cti", 51)), nullptr);
    EXPECT_EQ(ProducerTable::find(0), nullptr);
}
