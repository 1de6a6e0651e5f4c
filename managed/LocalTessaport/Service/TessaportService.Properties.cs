namespace Quorvex.Tessaport.API;

public partial class TessaportService
{
    public IEnumerable<PropertyDefinition> GetPropertyDefinitions(Guid driveId) =>
        PropertyCatalog.Of(RequestScope.Begin().DriveOf(driveId)).Select(property => property.ToDefinition()).ToList();

    public PropertyValues GetProperties(List<ItemId> ids, List<string> propertyDefinitionIds)
    {
        ArgumentNullException.ThrowIfNull(ids);
        ArgumentNullException.ThrowIfNull(propertyDefinitionIds);
        var request = RequestScope.Begin();
        var properties = propertyDefinitionIds.Select(PropertyCatalog.Find).OfType<Property>().ToList();
        if (properties.TrueForAll(property => property.InId is not null))
            return new PropertyValues { Values = PropertyReader.ReadFromIds(request, ids, properties) };
        using var drives = new OpenedDrives();
        var items = ids
            .Select(id => (Place: request.TryPlaceOf(id), id?.Action))
            .Where(item => item.Place is { } place && (!place.Drive.Offline || place.Path.Length == 0))
            .Select(item => (View: ItemView.ToDescribe(drives.At(item.Place!.Value)), item.Action))
            .Where(item => item.View.Exists || item.View.IsRoot)
            .ToList();
        var (views, actions) = (items.ConvertAll(item => item.View), items.ConvertAll(item => item.Action));
        return new PropertyValues { Values = PropertyReader.Read(request, views, actions, properties) };
    }
}
