#include "CardTestSupport.h"

#include <QFile>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace CardTest {

void AddCard(Bramlet::CardDatabase& cards, const QString& name,
    const QList<std::pair<QString, Runtime::Variant>>& values)
{
    const auto& set = cards.MainTable();
    set->AddNew();
    set->Fields(u"CardName"_s)->SetValue(name);
    for (const auto& [column, value] : values)
        set->Fields(column)->SetValue(value);
    set->Update();
}

QStringList CardNames(Bramlet::CardDatabase& cards)
{
    QStringList names;
    const auto& set = cards.MainTable();
    if (set->RecordCount() == 0)
        return names;
    for (set->MoveFirst(); !set->IsEOF(); set->MoveNext())
        names.append(set->Fields(u"CardName"_s)->Value().text());
    return names;
}

void MakeOldCardFile(Dao::DBEngine& engine, const QString& path)
{
    auto database = engine.DefaultWorkspace()->CreateDatabase(path);
    auto card = database->CreateTableDef(u"Quorbin_Card"_s);
    auto name = card->CreateField(u"CardName"_s, Dao::DataType::Text, 30);
    name->SetRequired(true);
    card->Fields().Append(name);
    card->Fields().Append(card->CreateField(u"FreeText"_s, Dao::DataType::Memo));
    card->Fields().Append(card->CreateField(u"Picture"_s, Dao::DataType::LongBinary));
    for (int i = 1; i <= 6; ++i)
        card->Fields().Append(
            card->CreateField(u"Keyword"_s + QString::number(i), Dao::DataType::Long));
    card->Fields().Append(card->CreateField(u"Field1"_s, Dao::DataType::Text, 50));
    card->Fields().Append(card->CreateField(u"Field2"_s, Dao::DataType::Long));
    card->Fields().Append(card->CreateField(u"Field3"_s, Dao::DataType::Double));
    card->Fields().Append(card->CreateField(u"Field4"_s, Dao::DataType::Currency));
    card->Fields().Append(card->CreateField(u"Field5"_s, Dao::DataType::Text, 50));
    card->Fields().Append(card->CreateField(u"URL"_s, Dao::DataType::Text, 255));
    card->Fields().Append(card->CreateField(u"Resource"_s, Dao::DataType::Text, 255));
    auto index = card->CreateIndex(u"CardID"_s);
    index->SetPrimary(true);
    index->Fields().Append(index->CreateField(u"CardName"_s));
    card->Indexes().Append(index);
    database->TableDefs().Append(card);
    const QString labels[] = { u"Name of pet"_s, u"Age"_s, u"Weight"_s, u"Cost"_s };
    for (int i = 0; i < 4; ++i) {
        card->Properties().Append(card->CreateProperty(
            u"FieldLabel"_s + QString::number(i + 1), Dao::DataType::Text, labels[i]));
    }
    auto keywords = database->CreateTableDef(u"KeyWords"_s);
    auto keyId = keywords->CreateField(u"KeyID"_s, Dao::DataType::Long);
    keyId->SetAttributes(Dao::AutoIncrementField);
    keywords->Fields().Append(keyId);
    keywords->Fields().Append(keywords->CreateField(u"KeyText"_s, Dao::DataType::Text, 20));
    keywords->Fields().Append(keywords->CreateField(u"KeyPicture"_s, Dao::DataType::LongBinary));
    database->TableDefs().Append(keywords);
    auto cards = database->OpenRecordset(u"Quorbin_Card"_s);
    for (const QString& pet : { u"Rex"_s, u"Tiddles"_s }) {
        cards->AddNew();
        cards->Fields(u"CardName"_s)->SetValue(pet);
        cards->Fields(u"Field3"_s)->SetValue(4.5);
        cards->Update();
    }
    database->Close();
}

WriteProtection::WriteProtection(const QString& path)
    : m_path(path)
{
    if (geteuid() != 0) {
        m_active = QFile::setPermissions(path, QFileDevice::ReadOwner);
        return;
    }
    // The superuser writes any file whatever its mode, but not an immutable one.
    const int descriptor = ::open(path.toLocal8Bit().constData(), O_RDONLY);
    int flags = 0;
    if (descriptor >= 0 && ::ioctl(descriptor, FS_IOC_GETFLAGS, &flags) == 0) {
        flags |= FS_IMMUTABLE_FL;
        m_active = ::ioctl(descriptor, FS_IOC_SETFLAGS, &flags) == 0;
    }
    if (descriptor >= 0)
        ::close(descriptor);
}

WriteProtection::~WriteProtection()
{
    if (!m_active)
        return;
    if (geteuid() != 0) {
        QFile::setPermissions(m_path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
        return;
    }
    const int descriptor = ::open(m_path.toLocal8Bit().constData(), O_RDONLY);
    int flags = 0;
    if (descriptor >= 0 && ::ioctl(descriptor, FS_IOC_GETFLAGS, &flags) == 0) {
        flags &= ~FS_IMMUTABLE_FL;
        ::ioctl(descriptor, FS_IOC_SETFLAGS, &flags);
    }
    if (descriptor >= 0)
        ::close(descriptor);
}

} // namespace CardTest
